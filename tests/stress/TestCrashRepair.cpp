#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "services/repair/CrashRepair.h"
#include "services/VoucherSample.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"

using namespace Qt::StringLiterals;

namespace {

const QStringList parts { QString(), u"-wal"_s };

// What a process leaves that is killed now: the files as they lie, log included.
QMap<QString, QByteArray> filesAsTheyLie()
{
    QMap<QString, QByteArray> files;
    for (const QString& part : parts)
        files.insert(part, TestFile::bytesOf(AppPaths::databasePath() + part));
    return files;
}

bool openedAndRepaired()
{
    const CrashRepair repair;
    const bool opened = DatabaseManager::instance().open();
    repair.run();
    return opened;
}

} // namespace

class TestCrashRepair final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    // Entries are stored first and evaluated after the commit.
    void levelsCatchUpAfterACrash_data()
    {
        addColumns<bool, QString>("crashed", "levels");
        addCase("killed between both", true, u"low low"_s);
        addCase("closed in order", false, u"normal normal"_s);
    }

    void levelsCatchUpAfterACrash()
    {
        QFETCH(bool, crashed);
        QVERIFY(VoucherSample::addEntries(2));
        QCOMPARE(VoucherSample::levels(), u"normal normal"_s);
        const auto files = filesAsTheyLie();
        DatabaseManager::instance().close();
        for (const QString& part : parts) {
            if (crashed)
                QVERIFY(TestFile::put(AppPaths::databasePath() + part, files.value(part)));
        }
        QVERIFY(openedAndRepaired());
        QTEST(VoucherSample::levels(), "levels");
    }

    void voucherFilesThatLostTheirRowAreToldAndKept()
    {
        QVERIFY(VoucherSample::archived(u"a.pdf"_s) > 0);
        const QString stray = AppPaths::voucherAssetsDir() + u"/stray.pdf"_s;
        QVERIFY(TestFile::put(stray, "copied, never stored"));
        const auto files = filesAsTheyLie();
        DatabaseManager::instance().close();
        for (const QString& part : parts)
            QVERIFY(TestFile::put(AppPaths::databasePath() + part, files.value(part)));
        QTest::ignoreMessage(
            QtInfoMsg, "No voucher names the file voucher_assets/stray.pdf; it is left alone");
        QVERIFY(openedAndRepaired());
        QCOMPARE(VoucherSample::inventory(), u"1 vouchers, 0 links, 2 files"_s);
    }
};

static const RegisteredTest<TestCrashRepair> registered;

#include "TestCrashRepair.moc"
