#include "app/PortableProgram.h"
#include "db/DatabaseManager.h"
#include "services/backup/BackupService.h"
#include "support/TestCase.h"
#include "support/TestDatabase.h"

#include <QLockFile>
#include <QTemporaryDir>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {

// The process that holds the data directory; 0 when none does.
qint64 holderOf(const PortableFolder& folder)
{
    qint64 pid = 0;
    QString host;
    QString program;
    const QLockFile lock(folder.dataDir() + u"/brixa.lock"_s);
    return lock.getLockInfo(&pid, &host, &program) ? pid : 0;
}

// Ends the restarted program however the test goes.
struct Termination {
    ~Termination()
    {
        if (const qint64 pid = holderOf(folder))
            ::kill(static_cast<pid_t>(pid), SIGTERM);
    }
    const PortableFolder& folder;
};

QString companyIn(const PortableFolder& folder)
{
    return TestDatabase::rowOfFile(
        folder.database(), u"SELECT company_name FROM company_profile"_s);
}

} // namespace

class TestRestart final : public TestCase {
    Q_OBJECT

private slots:
    void aRestoreStartsTheProgramAnewOnTheRestoredData()
    {
        const PortableFolder folder(QStringLiteral(BRIXA_RESTORE_HELPER));
        QVERIFY(folder.hasFamiliarOwner());
        QTemporaryDir backups;
        QVERIFY(DatabaseManager::instance().open());
        const BackupResult backup = BackupService().backupTo(backups.path());
        DatabaseManager::instance().close();
        QVERIFY2(backup.ok, qUtf8Printable(backup.message));
        QCOMPARE(TestDatabase::runOnFile(
                     folder.database(), u"UPDATE company_profile SET company_name = '其他公司';"_s),
            QString());

        Run first(folder, u"BRIXA_TEST_RESTORE"_s, backup.folder);
        const Termination termination { folder };
        QVERIFY2(first.reaches("Main window shown"), first.output());
        const qint64 firstPid = holderOf(folder);
        QVERIFY2(first.reaches("Restored "), first.output());
        QCOMPARE(first.end(), 0);

        // Started by the first one and not by this test: its log tells where it has come to.
        const auto showsAgain = [&] { return folder.log().count(u"Main window shown"_s) == 2; };
        QVERIFY2(QTest::qWaitFor(showsAgain, 60'000), qUtf8Printable(folder.log()));
        QTRY_VERIFY_WITH_TIMEOUT(folder.log().contains(u"UI self-check result:"_s), 30'000);
        const qint64 secondPid = holderOf(folder);
        QVERIFY(secondPid > 0 && secondPid != firstPid);
        QCOMPARE(::kill(static_cast<pid_t>(secondPid), SIGTERM), 0);
        QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(folder.dataDir() + u"/brixa.lock"_s), 30'000);
        QCOMPARE(companyIn(folder), u"杭州山岚设计有限公司"_s);
        QVERIFY2(!folder.log().contains(u"FAILED"_s), qUtf8Printable(folder.log()));
    }
};

static const RegisteredTest<TestRestart> registered;

#include "TestRestart.moc"
