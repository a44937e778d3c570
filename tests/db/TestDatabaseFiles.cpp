#include "core/AppPaths.h"
#include "db/Connection.h"
#include "db/DatabaseManager.h"
#include "db/ProfileDao.h"
#include "support/TestCase.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/Warnings.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

const QString helperPath = QStringLiteral(DB_HELPER);

// The bytes of a closed database file with a project and a profile in it.
QByteArray healthyFile()
{
    DatabaseManager& manager = DatabaseManager::instance();
    const bool made = manager.open()
        && TestDatabase::run(
            { u"UPDATE company_profile SET company_name = '甲公司'"_s,
                u"INSERT INTO projects (name, code, client_name) VALUES ('n', 'P', 'c')"_s })
               .isEmpty();
    manager.close();
    return made ? TestFile::bytesOf(AppPaths::databasePath()) : QByteArray();
}

// The helper in a folder of its own with its own data directory.
class Outpost final {
public:
    explicit Outpost(const QString& name, const QByteArray& database)
        : m_root(m_temporary.path() + u'/' + name)
    {
        const auto open = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadOther
            | QFile::ExeOther;
        m_ready = QDir().mkpath(m_root + u"/data/backups"_s)
            && QFile::copy(helperPath, m_root + u"/db_helper"_s)
            && QFile::setPermissions(m_temporary.path(), open)
            && TestFile::put(databasePath(), database);
    }
    QString databasePath() const { return m_root + u"/data/brixa.db"_s; }
    QStringList copies() const { return QDir(m_root + u"/data/backups"_s).entryList(QDir::Files); }
    bool protect() const { return QFile::setPermissions(databasePath(), everybody); }
    bool unprotect() const
    {
        return QFile::setPermissions(
            databasePath(), everybody | QFile::WriteOwner | QFile::WriteOther);
    }
    bool setFolderWritable(bool writable) const
    {
        const auto enter = everybody | QFile::ExeOwner | QFile::ExeOther;
        return QFile::setPermissions(
            m_root + u"/data"_s, writable ? enter | QFile::WriteOwner : enter);
    }
    QStringList dataFiles() const
    {
        return QDir(m_root + u"/data"_s).entryList(QDir::Files, QDir::Name);
    }
    QStringList output(const QString& mode) const
    {
        QProcess process;
        process.start(m_root + u"/db_helper"_s, { mode });
        if (!m_ready || !process.waitForFinished())
            return { u"(the helper did not run)"_s };
        return QString::fromUtf8(process.readAllStandardOutput()).trimmed().split(u'\n');
    }

private:
    static constexpr QFile::Permissions everybody
        = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;

    QTemporaryDir m_temporary;
    QString m_root;
    bool m_ready = false;
};

} // namespace

class TestDatabaseFiles final : public TestCase {
    Q_OBJECT

private slots:
    void cleanup()
    {
        DatabaseManager::instance().close();
        QVERIFY(!QFile::exists(AppPaths::databasePath() + u"-wal"_s));
        QVERIFY(!QFile::exists(AppPaths::databasePath() + u"-shm"_s));
    }

    void damagedFilesAreRefusedAndKept_data()
    {
        addColumns<QByteArray, QString>("bytes", "reason");
        resetDataDirectory();
        const QByteArray healthy = healthyFile();
        addCase("garbage", QByteArray(5000, 'x'), u"not a database"_s);
        addCase("a short text", QByteArray("not a database\n"), u"not a database"_s);
        addCase("zeros", QByteArray(8192, '\0'), u"not a database"_s);
        addCase("cut to half", healthy.first(healthy.size() / 2), u"malformed"_s);
        addCase("cut inside a page", healthy.first(healthy.size() - 1000),
            u"^数据库完整性检查失败："_s);
        addCase("cut to its first page", healthy.first(4096), u"malformed"_s);
        addCase("cut to its header", healthy.first(100), u"malformed"_s);
        addCase("header overwritten", "garbage garbage garbage " + healthy.sliced(24),
            u"not a database"_s);
    }

    void damagedFilesAreRefusedAndKept()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(TestFile::put(AppPaths::databasePath(), bytes));
        QFETCH(QString, reason);
        QTest::ignoreMessage(QtCriticalMsg, QRegularExpression(reason));
        QVERIFY(!DatabaseManager::instance().open());
        QVERIFY(DatabaseManager::instance().lastError().contains(QRegularExpression(reason)));
        DatabaseManager::instance().close();
        QCOMPARE(TestFile::bytesOf(AppPaths::databasePath()), bytes);
    }

    void anEmptyFileIsANewOne()
    {
        QVERIFY(TestFile::put(AppPaths::databasePath(), QByteArray()));
        QVERIFY(DatabaseManager::instance().open());
        QCOMPARE(DatabaseManager::instance().tableNames().size(), 7);
    }

    void aFolderInTheFilesPlaceIsAnError()
    {
        QVERIFY(QDir().mkpath(AppPaths::databasePath()));
        expectWarnings({ u"Cannot open database: .*unable"_s }, QtCriticalMsg);
        QVERIFY(!DatabaseManager::instance().open());
        QVERIFY(
            DatabaseManager::instance().lastError().contains(u"unable to open database file"_s));
    }

    void aFileThatAnotherProcessHoldsIsRefusedAndKept()
    {
        const QByteArray bytes = healthyFile();
        QProcess holder;
        holder.start(helperPath, { u"lock"_s, AppPaths::databasePath() });
        QVERIFY(holder.waitForReadyRead());
        QCOMPARE(holder.readLine().trimmed(), QByteArray("locked"));

        expectWarnings({ u"PRAGMA failed: .*database is locked"_s }, QtCriticalMsg);
        QVERIFY(!DatabaseManager::instance().open());
        QVERIFY(DatabaseManager::instance().lastError().contains(u"database is locked"_s));
        DatabaseManager::instance().close();
        QCOMPARE(TestFile::bytesOf(AppPaths::databasePath()), bytes);

        holder.closeWriteChannel();
        QVERIFY(holder.waitForFinished());
        QVERIFY(DatabaseManager::instance().open());
        QCOMPARE(ProfileDao().load().companyName, u"甲公司"_s);
    }

    void aReadOnlyFileCanBeRead_data()
    {
        QTest::addColumn<QString>("journalMode");
        addCase("with a write-ahead log", u"wal"_s);
        addCase("with a rollback journal", u"delete"_s);
    }

    void aReadOnlyFileCanBeRead()
    {
        QFETCH(QString, journalMode);
        healthyFile();
        QCOMPARE(TestDatabase::rowOfFile(
                     AppPaths::databasePath(), u"PRAGMA journal_mode = "_s + journalMode),
            journalMode);
        const QByteArray bytes = TestFile::bytesOf(AppPaths::databasePath());
        const Outpost outpost(u"readonly"_s, bytes);
        QVERIFY(outpost.protect());

        const QStringList output = outpost.output(u"guest"_s);
        const QStringList expected { u"log: The database file is read-only: nothing can be saved"_s,
            u"opened: 1 "_s, u"version: 3"_s, u"projects: 1"_s };
        QCOMPARE(output.first(qMin(output.size(), expected.size())), expected);
        QVERIFY(
            output.value(4).startsWith(u"log: SQL error: attempt to write a readonly database"_s));
        QCOMPARE(output.value(5), u"written: 0"_s);
        QCOMPARE(TestFile::bytesOf(outpost.databasePath()), bytes);
        QCOMPARE(outpost.dataFiles(), QStringList { u"brixa.db"_s });

        QVERIFY(outpost.unprotect());
        QCOMPARE(outpost.output(u"guest"_s),
            (QStringList { u"opened: 1 "_s, u"version: 3"_s, u"projects: 1"_s, u"written: 1"_s }));
    }

    void aReadOnlyOlderFileIsNotMigrated()
    {
        healthyFile();
        QCOMPARE(TestDatabase::runOnFile(AppPaths::databasePath(), u"PRAGMA user_version = 2"_s),
            QString());
        const Outpost outpost(u"older"_s, TestFile::bytesOf(AppPaths::databasePath()));
        QVERIFY(outpost.protect());
        QCOMPARE(outpost.output(u"guest"_s).value(1), u"opened: 0 数据库文件为只读，无法升级"_s);
        QVERIFY(outpost.copies().isEmpty());
    }

    void aFileWhoseVersionCannotBeReadIsRefused()
    {
        // In a folder that cannot be written there is no place for the write-ahead log.
        const QByteArray bytes = healthyFile();
        const Outpost outpost(u"sealed"_s, bytes);
        QVERIFY(outpost.protect() && outpost.setFolderWritable(false));
        const QStringList output = outpost.output(u"stranger"_s);
        QVERIFY(outpost.setFolderWritable(true));
        QCOMPARE(output.size(), 2);
        QVERIFY(output.at(0).startsWith(u"log: Cannot read the database version: "_s));
        QVERIFY(output.at(1).startsWith(u"opened: 0 "_s));
        QCOMPARE(TestFile::bytesOf(outpost.databasePath()), bytes);
    }

    void theFolderMayHaveAnyName()
    {
        healthyFile();
        QCOMPARE(TestDatabase::runOnFile(AppPaths::databasePath(), u"PRAGMA user_version = 2"_s),
            QString());
        const Outpost outpost(u"it's 100% 账本;--"_s, TestFile::bytesOf(AppPaths::databasePath()));
        QCOMPARE(outpost.output(u"here"_s),
            (QStringList { u"opened: 1 "_s, u"version: 3"_s, u"projects: 1"_s, u"written: 1"_s }));
        QCOMPARE(outpost.copies().size(), 1);
    }

    void openingAgainReplacesTheConnection()
    {
        QVERIFY(DatabaseManager::instance().open());
        QVERIFY(DatabaseManager::instance().open());
        QCOMPARE(QSqlDatabase::connectionNames(), QStringList { Connection::name() });
        QCOMPARE(DatabaseManager::instance().lastError(), QString());
    }

    void afterClosingNothingIsRegistered()
    {
        QVERIFY(DatabaseManager::instance().open());
        DatabaseManager::instance().close();
        DatabaseManager::instance().close();
        QVERIFY(QSqlDatabase::connectionNames().isEmpty());

        ProfileDao profiles;
        QTest::ignoreMessage(
            QtWarningMsg, "SQL error: 数据库未打开 | SELECT * FROM company_profile WHERE id = 1");
        QVERIFY(!profiles.find());
        QCOMPARE(profiles.lastError(), u"数据库未打开"_s);
        QVERIFY(QSqlDatabase::connectionNames().isEmpty());
    }
};

static const RegisteredTest<TestDatabaseFiles> registered;

#include "TestDatabaseFiles.moc"
