#include "app/PortableProgram.h"
#include "support/TestCase.h"
#include "support/TestFile.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

const QString program = QStringLiteral(BRIXA_PROGRAM);

} // namespace

class TestProgram final : public TestCase {
    Q_OBJECT

private slots:
    void aFirstStartLeavesNothingBehind()
    {
        const PortableFolder folder(program);
        Run run(folder);
        QVERIFY2(run.reaches("Waiting at the disclaimer"), run.output());
        QCOMPARE(run.terminate(), 0);

        QCOMPARE(folder.dataFiles(), QStringList { u"brixa.db"_s });
        QCOMPARE(
            QDir(folder.home()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList());
        const QString log = folder.log();
        QVERIFY(log.contains(u"Brixa starting, data dir: "_s));
        // The offscreen platform complains about itself.
        static const QRegularExpression trouble(
            u"^.{19} (WARN |ERROR|FATAL) (?!This plugin does not support).*$"_s,
            QRegularExpression::MultilineOption);
        QCOMPARE(trouble.match(log).captured(), QString());
        QCOMPARE(QDir(folder.dataDir() + u"/logs"_s).entryList(QDir::Files).size(), 1);
    }

    void theEndMayComeAtAnyMoment_data()
    {
        QTest::addColumn<int>("milliseconds");
        addCase("as the data are opened", 0);
        addCase("while the splash shows", 500);
    }

    void theEndMayComeAtAnyMoment()
    {
        QFETCH(int, milliseconds);
        const PortableFolder folder(program);
        QVERIFY(folder.hasFamiliarOwner());
        Run run(folder);
        QVERIFY2(run.reaches("Brixa starting"), run.output());
        QTest::qWait(milliseconds);
        QCOMPARE(run.terminate(), 0);
        QVERIFY2(!run.output().contains("Main window shown"), run.output());
        QCOMPARE(folder.dataFiles(), QStringList { u"brixa.db"_s });
    }

    void aSecondStartIsTurnedAway()
    {
        const PortableFolder folder(program);
        Run first(folder);
        QVERIFY2(first.reaches("Waiting at the disclaimer"), first.output());
        const QByteArray bytes = TestFile::bytesOf(folder.database());
        Run second(folder);
        QVERIFY2(second.reaches("another instance holds the data directory"), second.output());
        QCOMPARE(second.terminate(), 1);
        QCOMPARE(TestFile::bytesOf(folder.database()), bytes);
        QCOMPARE(first.terminate(), 0);
    }

    void aCrashNeverKeepsTheOwnerOut()
    {
        const PortableFolder folder(program);
        {
            Run crashed(folder);
            QVERIFY2(crashed.reaches("Waiting at the disclaimer"), crashed.output());
            crashed.kill();
        }
        Run next(folder);
        QVERIFY2(next.reaches("Waiting at the disclaimer"), next.output());
        QCOMPARE(next.terminate(), 0);
        QCOMPARE(folder.dataFiles(), QStringList { u"brixa.db"_s });
    }

    // Killed when the old data were aside: the start itself creates an empty voucher folder.
    void anInterruptedRestoreIsTakenBack()
    {
        const PortableFolder folder(program);
        const QString swap = folder.dataDir() + u"/restore_swap"_s;
        QVERIFY(QDir().mkpath(swap + u"/new/voucher_assets"_s)
            && QDir().mkpath(swap + u"/old/voucher_assets"_s));
        QVERIFY(folder.hasFamiliarOwner());
        QVERIFY(QFile::rename(folder.database(), swap + u"/old/brixa.db"_s));
        QVERIFY(TestFile::put(swap + u"/old/voucher_assets/a.pdf"_s, "old"));
        QVERIFY(TestFile::put(swap + u"/new/brixa.db"_s, "new"));
        Run run(folder);
        QVERIFY2(run.reaches("Main window shown"), run.output());
        QVERIFY(run.output().contains("Interrupted restore repaired"));
        QVERIFY2(!run.output().contains("Waiting at"), "a familiar owner passes the gates");
        QCOMPARE(run.terminate(), 0);
        QCOMPARE(folder.dataFiles(), QStringList { u"brixa.db"_s });
        QCOMPARE(
            TestFile::bytesOf(folder.dataDir() + u"/voucher_assets/a.pdf"_s), QByteArray("old"));
        QVERIFY(!QFile::exists(swap));
    }

    void anInterruptedRestoreThatCannotBeTakenBackEndsTheProgram()
    {
        const PortableFolder folder(program);
        const QString swap = folder.dataDir() + u"/restore_swap"_s;
        QVERIFY(QDir().mkpath(swap + u"/new"_s) && QDir().mkpath(swap + u"/old"_s));
        const QStringList paths { swap + u"/old/brixa.db"_s, swap + u"/new/brixa.db"_s,
            folder.database() };
        for (const QString& path : paths)
            QVERIFY(TestFile::put(path, path.toUtf8()));
        Run run(folder);
        QVERIFY2(run.reaches("an interrupted restore cannot be repaired"), run.output());
        QCOMPARE(run.terminate(), 1);
        for (const QString& path : paths)
            QCOMPARE(TestFile::bytesOf(path), path.toUtf8());
    }
};

static const RegisteredTest<TestProgram> registered;

#include "TestProgram.moc"
