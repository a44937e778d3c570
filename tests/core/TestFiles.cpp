#include "core/AppPaths.h"
#include "core/InstanceLock.h"
#include "core/SafeFile.h"
#include "support/FileSizeLimit.h"
#include "support/TestCase.h"
#include "support/TestFile.h"

#include <QDir>
#include <QFile>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

// A process that holds the lock until its input closes.
class LockHolder {
public:
    explicit LockHolder(const QString& path)
    {
        m_process.start(QStringLiteral(CORE_HELPER), { u"hold"_s, path });
        m_process.waitForReadyRead();
        m_answer = m_process.readLine().trimmed();
    }
    ~LockHolder()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }
    QByteArray answer() const { return m_answer; }

private:
    QProcess m_process;
    QByteArray m_answer;
};

} // namespace

class TestFiles final : public TestCase {
    Q_OBJECT

private slots:
    void everyFolderIsCreated()
    {
        const QString dataDir = AppPaths::dataDir();
        QVERIFY(QDir(dataDir).removeRecursively());
        QVERIFY(AppPaths::ensureDirs());
        const QStringList expected { u"auto_backup_before_restore"_s, u"backups"_s, u"exports"_s,
            u"logs"_s, u"voucher_assets"_s };
        QCOMPARE(
            QDir(dataDir).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name), expected);
        QVERIFY(AppPaths::ensureDirs());
    }

    void aFileInAFoldersPlaceIsAFailure()
    {
        QVERIFY(QDir(AppPaths::voucherAssetsDir()).removeRecursively());
        QVERIFY(QDir(AppPaths::logsDir()).removeRecursively());
        QVERIFY(TestFile::put(AppPaths::voucherAssetsDir(), "in the way"));
        QVERIFY(!AppPaths::ensureDirs());
        QVERIFY2(QDir(AppPaths::logsDir()).exists(), "the later folders are created all the same");
    }

    void storedPathsCountFromTheDataDirectory()
    {
        const QString data = AppPaths::dataDir();
        QCOMPARE(AppPaths::toStored(data + u"/voucher_assets/2025/a.jpg"_s),
            u"voucher_assets/2025/a.jpg"_s);
        QCOMPARE(
            AppPaths::toStored(data.toUpper() + u"/exports/决定书.pdf"_s), u"exports/决定书.pdf"_s);
        QCOMPARE(AppPaths::toStored(u"/tmp/a.pdf"_s), u"/tmp/a.pdf"_s);
        const QString neighbour = data + u"2/a.pdf"_s;
        QCOMPARE(AppPaths::toStored(neighbour), neighbour);
        QCOMPARE(AppPaths::toStored(data), QString());
        QCOMPARE(AppPaths::toStored(data + u"/exports/../logs/a.txt"_s), u"logs/a.txt"_s);
    }

    void storedPathsResolve()
    {
        QCOMPARE(AppPaths::toAbsolute(QString()), QString());
        QCOMPARE(AppPaths::toAbsolute(u"voucher_assets/2025/a.jpg"_s),
            QDir::toNativeSeparators(AppPaths::dataDir() + u"/voucher_assets/2025/a.jpg"_s));
        QCOMPARE(AppPaths::toAbsolute(u"/tmp/b.pdf"_s), QDir::toNativeSeparators(u"/tmp/b.pdf"_s));
    }

    void safeWriteReplacesTheWholeFile()
    {
        const QString path = AppPaths::exportsDir() + u"/报表.csv"_s;
        QVERIFY(SafeFile::write(path, "a longer first content"));
        QVERIFY(SafeFile::write(path, "second"));
        QCOMPARE(TestFile::bytesOf(path), QByteArray("second"));
        QCOMPARE(QDir(AppPaths::exportsDir()).entryList(QDir::Files).size(), 1);
    }

    void safeWriteFailsWithoutTouchingTheTarget()
    {
        QString error;
        QVERIFY(!SafeFile::write(AppPaths::exportsDir(), "a directory stands there", &error));
        QVERIFY(!error.isEmpty());
        QVERIFY(!SafeFile::write(AppPaths::exportsDir() + u"/missing/a.csv"_s, "x"));
    }

    void aFullDiskKeepsTheOldFile()
    {
#ifdef Q_OS_UNIX
        const QString path = AppPaths::exportsDir() + u"/ledger.csv"_s;
        QVERIFY(SafeFile::write(path, "old"));

        QString error;
        bool written = true;
        bool smallWritten = false;
        {
            const FileSizeLimit limit(4096);
            written = SafeFile::write(path, QByteArray(20'000, 'x'), &error);
            smallWritten = SafeFile::write(path + u".small"_s, "fits");
        }
        QVERIFY(!written);
        QVERIFY(!error.isEmpty());
        QVERIFY2(smallWritten, "the next file that fits is written");
        QCOMPARE(TestFile::bytesOf(path), QByteArray("old"));
        QCOMPARE(QDir(AppPaths::exportsDir()).entryList(QDir::Files).size(), 2);
#endif
    }

    void aLivingHolderKeepsOthersOut()
    {
        const QString path = AppPaths::instanceLockPath();
        {
            const LockHolder holder(path);
            QCOMPARE(holder.answer(), QByteArray("held"));
            InstanceLock second(path);
            QCOMPARE(second.acquire(), InstanceLock::Outcome::HeldByOther);
            const LockHolder third(path);
            QCOMPARE(third.answer(), QByteArray("refused"));
        }
        InstanceLock after(path);
        QCOMPARE(after.acquire(), InstanceLock::Outcome::Acquired);
        after.release();
        QVERIFY(!QFile::exists(path));
    }

    void aStaleLockNeverKeepsTheOwnerOut()
    {
        const QByteArray ownNumber = QByteArray::number(QCoreApplication::applicationPid());
        const QByteArray thisComputer = QSysInfo::machineHostName().toUtf8();
        const QString path = AppPaths::instanceLockPath();
        // Garbage, one by another computer, one under a number that lives again.
        for (const QByteArray& left :
            { QByteArray("\x00\x01garbage", 9), QByteArray("1\nbrixa\nanother-computer\n\n\n"),
                ownNumber + "\ntest_core\n" + thisComputer + "\n\n\n" }) {
            QVERIFY(TestFile::put(path, left));
            InstanceLock lock(path);
            QCOMPARE(lock.acquire(), InstanceLock::Outcome::Acquired);
        }
    }

    void aLockThatCannotBeWrittenIsNotTakenForAnotherStart()
    {
        InstanceLock withoutFolder(AppPaths::dataDir() + u"/missing/brixa.lock"_s);
        QCOMPARE(withoutFolder.acquire(), InstanceLock::Outcome::CannotCreate);
        QVERIFY(QDir().mkpath(AppPaths::instanceLockPath()));
        InstanceLock behindFolder(AppPaths::instanceLockPath());
        QCOMPARE(behindFolder.acquire(), InstanceLock::Outcome::CannotCreate);
    }
};

static const RegisteredTest<TestFiles> registered;

#include "TestFiles.moc"
