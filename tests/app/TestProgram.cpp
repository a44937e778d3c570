#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "db/ProfileDao.h"
#include "support/TestCase.h"
#include "support/TestFile.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

// The program in a folder of its own, with a home directory of its own.
class PortableFolder {
public:
    PortableFolder()
    {
        QDir().mkpath(dataDir());
        QDir().mkpath(home());
        QFile::copy(QStringLiteral(BRIXA_PROGRAM), program());
    }

    QString program() const { return m_dir.filePath(u"brixa"_s); }
    QString dataDir() const { return m_dir.filePath(u"data"_s); }
    QString database() const { return dataDir() + u"/brixa.db"_s; }
    QString home() const { return m_dir.filePath(u"home"_s); }

    QStringList dataFiles() const
    {
        return QDir(dataDir()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QString log() const
    {
        QString text;
        const QDir logs(dataDir() + u"/logs"_s);
        for (const QString& name : logs.entryList(QDir::Files, QDir::Name))
            text += QString::fromUtf8(TestFile::bytesOf(logs.filePath(name)));
        return text;
    }

private:
    QTemporaryDir m_dir;
};

// The running program; what it logs tells where it has come to.
class Run {
public:
    explicit Run(const PortableFolder& folder)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"HOME"_s, folder.home());
        for (const QString& name :
            { u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_CACHE_HOME"_s, u"XDG_STATE_HOME"_s })
            environment.remove(name);
        environment.insert(u"QT_FORCE_STDERR_LOGGING"_s, u"1"_s);
        m_process.setProcessEnvironment(environment);
        m_process.start(folder.program(), {});
        m_process.waitForStarted();
    }
    ~Run() { kill(); }

    bool reaches(const QByteArray& line)
    {
        QDeadlineTimer deadline(20'000);
        while (!m_output.contains(line) && !deadline.hasExpired()
            && m_process.state() == QProcess::Running) {
            m_process.waitForReadyRead(200);
            m_output += m_process.readAllStandardError();
        }
        return m_output.contains(line);
    }

    // As a log-out does; the exit status.
    int terminate()
    {
        m_process.terminate();
        m_process.waitForFinished();
        m_output += m_process.readAllStandardError();
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }

    void kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    QByteArray output() const { return m_output; }

private:
    QProcess m_process;
    QByteArray m_output;
};

// A database whose owner has passed all gates before, made in the test's own data directory.
bool makeFamiliarDatabase(const QString& target, bool withPassword)
{
    if (!DatabaseManager::instance().open())
        return false;
    ProfileDao profiles;
    CompanyProfile profile = profiles.load();
    profile.companyName = u"杭州山岚设计有限公司"_s;
    profile.shareholderName = u"林岚"_s;
    const bool stored = profiles.save(profile) && profiles.confirmDisclaimer(u"DISCLAIMER_V1.0"_s)
        && profiles.setPassword(withPassword, u"scrypt$unknown"_s, QString(32, u'0'));
    DatabaseManager::instance().close();
    return stored && QFile::copy(AppPaths::databasePath(), target);
}

} // namespace

class TestProgram final : public TestCase {
    Q_OBJECT

private slots:
    void aFirstStartLeavesNothingBehind();
    void aFamiliarOwnerSeesTheWindow();
    void theEndMayComeAtAnyMoment_data();
    void theEndMayComeAtAnyMoment();
    void aPasswordIsNeverPassedBy();
    void aSecondStartIsTurnedAway();
    void aCrashNeverKeepsTheOwnerOut();
    void aMissingDataDirectoryEndsTheProgram();
    void anUnreadableDatabaseKeepsItsBytes();
    void anInterruptedRestoreIsTakenBack();
    void anInterruptedRestoreThatCannotBeTakenBackEndsTheProgram();
};

void TestProgram::aFirstStartLeavesNothingBehind()
{
    const PortableFolder folder;
    Run run(folder);
    QVERIFY2(run.reaches("Waiting at the disclaimer"), run.output());
    QCOMPARE(run.terminate(), 0);

    QCOMPARE(folder.dataFiles(), QStringList { u"brixa.db"_s });
    QCOMPARE(QDir(folder.home()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
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

void TestProgram::aFamiliarOwnerSeesTheWindow()
{
    const PortableFolder folder;
    QVERIFY(makeFamiliarDatabase(folder.database(), false));
    Run run(folder);
    QVERIFY2(run.reaches("Main window shown"), run.output());
    QVERIFY(!run.output().contains("Waiting at"));
    QCOMPARE(run.terminate(), 0);
    QCOMPARE(folder.dataFiles(), QStringList { u"brixa.db"_s });
}

void TestProgram::theEndMayComeAtAnyMoment_data()
{
    QTest::addColumn<int>("milliseconds");
    QTest::newRow("as the data are opened") << 0;
    QTest::newRow("while the splash shows") << 500;
}

void TestProgram::theEndMayComeAtAnyMoment()
{
    QFETCH(int, milliseconds);
    const PortableFolder folder;
    QVERIFY(makeFamiliarDatabase(folder.database(), false));
    Run run(folder);
    QVERIFY2(run.reaches("Brixa starting"), run.output());
    QTest::qWait(milliseconds);
    QCOMPARE(run.terminate(), 0);
    QVERIFY2(!run.output().contains("Main window shown"), run.output());
    QCOMPARE(folder.dataFiles(), QStringList { u"brixa.db"_s });
}

void TestProgram::aPasswordIsNeverPassedBy()
{
    const PortableFolder folder;
    QVERIFY(makeFamiliarDatabase(folder.database(), true));
    Run run(folder);
    QVERIFY2(run.reaches("Waiting at the start-up password"), run.output());
    QCOMPARE(run.terminate(), 0);
    QVERIFY(!run.output().contains("Main window shown"));
}

void TestProgram::aSecondStartIsTurnedAway()
{
    const PortableFolder folder;
    Run first(folder);
    QVERIFY2(first.reaches("Waiting at the disclaimer"), first.output());
    const QByteArray bytes = TestFile::bytesOf(folder.database());
    Run second(folder);
    QVERIFY2(second.reaches("another instance holds the data directory"), second.output());
    QCOMPARE(second.terminate(), 1);
    QCOMPARE(TestFile::bytesOf(folder.database()), bytes);
    QCOMPARE(first.terminate(), 0);
}

void TestProgram::aCrashNeverKeepsTheOwnerOut()
{
    const PortableFolder folder;
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

void TestProgram::aMissingDataDirectoryEndsTheProgram()
{
    const PortableFolder folder;
    QVERIFY(QDir().rmdir(folder.dataDir()));
    QVERIFY(TestFile::put(folder.dataDir(), "a file in the directory's place"));
    Run run(folder);
    QVERIFY2(run.reaches("data directory cannot be created"), run.output());
    QCOMPARE(run.terminate(), 1);
    QCOMPARE(TestFile::bytesOf(folder.dataDir()), QByteArray("a file in the directory's place"));
}

void TestProgram::anUnreadableDatabaseKeepsItsBytes()
{
    const PortableFolder folder;
    const QByteArray garbage(8192, 'x');
    QVERIFY(TestFile::put(folder.database(), garbage));
    Run run(folder);
    QVERIFY2(run.reaches("database cannot be opened"), run.output());
    QCOMPARE(run.terminate(), 1);
    QCOMPARE(TestFile::bytesOf(folder.database()), garbage);
    QCOMPARE(folder.dataFiles(), QStringList { u"brixa.db"_s });
}

// Killed when the old data were aside: the start itself creates an empty voucher folder.
void TestProgram::anInterruptedRestoreIsTakenBack()
{
    const PortableFolder folder;
    const QString swap = folder.dataDir() + u"/restore_swap"_s;
    QVERIFY(QDir().mkpath(swap + u"/new"_s) && QDir().mkpath(swap + u"/old/voucher_assets"_s));
    QVERIFY(makeFamiliarDatabase(swap + u"/old/brixa.db"_s, false));
    QVERIFY(TestFile::put(swap + u"/old/voucher_assets/a.pdf"_s, "old"));
    QVERIFY(TestFile::put(swap + u"/new/brixa.db"_s, "new"));
    QVERIFY(QDir().mkpath(swap + u"/new/voucher_assets"_s));
    Run run(folder);
    QVERIFY2(run.reaches("Main window shown"), run.output());
    QVERIFY(run.output().contains("Interrupted restore repaired"));
    QCOMPARE(run.terminate(), 0);
    QCOMPARE(folder.dataFiles(), QStringList { u"brixa.db"_s });
    QCOMPARE(TestFile::bytesOf(folder.dataDir() + u"/voucher_assets/a.pdf"_s), QByteArray("old"));
    QVERIFY(!QFile::exists(swap));
}

void TestProgram::anInterruptedRestoreThatCannotBeTakenBackEndsTheProgram()
{
    const PortableFolder folder;
    const QString swap = folder.dataDir() + u"/restore_swap"_s;
    QVERIFY(QDir().mkpath(swap + u"/new"_s) && QDir().mkpath(swap + u"/old"_s));
    for (const QString& path :
        { swap + u"/old/brixa.db"_s, swap + u"/new/brixa.db"_s, folder.database() })
        QVERIFY(TestFile::put(path, path.toUtf8()));
    Run run(folder);
    QVERIFY2(run.reaches("an interrupted restore cannot be repaired"), run.output());
    QCOMPARE(run.terminate(), 1);
    for (const QString& path :
        { swap + u"/old/brixa.db"_s, swap + u"/new/brixa.db"_s, folder.database() })
        QCOMPARE(TestFile::bytesOf(path), path.toUtf8());
}

QTEST_GUILESS_MAIN(TestProgram)
#include "TestProgram.moc"
