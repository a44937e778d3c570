#include "core/AppPaths.h"
#include "db/ProfileDao.h"
#include "pages/settings/BackupCard.h"
#include "services/backup/BackupService.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/ModalAnswerer.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/TestLedger.h"
#include "widgets/Banner.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

class TestBackupCard final : public DatabaseTestCase {
    Q_OBJECT

private:
    static void press(BackupCard& card, const QString& text)
    {
        card.show();
        Hands::press(card, text);
    }

    static void renameCompany(const QString& name)
    {
        QCOMPARE(
            TestDatabase::run({ u"UPDATE company_profile SET company_name = '%1'"_s.arg(name) }),
            QString());
    }
    static QString company() { return ProfileDao().load().companyName; }

    QStringList foldersIn(const QString& path) const
    {
        return QDir(path).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    }

    // A backup of the company 旧公司 with one entry; the program then works for 新公司.
    QString backupOfEarlierDays(const QTemporaryDir& dir) const
    {
        renameCompany(u"旧公司"_s);
        TestLedger::add(TestLedger::entry(u"2025-05-06"_s, Category::Other, Direction::In));
        const QString folder = BackupService().backupTo(dir.path()).folder;
        renameCompany(u"新公司"_s);
        return folder;
    }

private slots:
    void aBackupIsMadeAndToldOf()
    {
        const QTemporaryDir dir;
        BackupCard card;
        const QSignalSpy status(&card, &BackupCard::statusChanged);
        const auto* last = card.findChild<QLabel*>(u"lastBackup"_s);
        card.showProfile({});
        QVERIFY(!card.findChild<Banner*>()->isHidden() && last->text().contains(u"未备份"_s));
        ModalAnswerer answers(Hands::choosePath(dir.path()));
        answers.expectButton(u"关闭"_s);
        press(card, u"立即备份"_s);
        const QStringList folders = foldersIn(dir.path());
        QCOMPARE(folders.size(), 1);
        QCOMPARE(answers.seen().at(1).title, u"备份完成"_s);
        QCOMPARE(answers.seen().at(1).text,
            u"备份已生成：\n%1\n\n包含数据库与全部凭证文件。"_s.arg(dir.filePath(folders.first())));
        QCOMPARE(answers.seen().at(1).buttons, QStringList({ u"打开文件夹"_s, u"关闭"_s }));
        QCOMPARE(status.count(), 1);
        card.showProfile(ProfileDao().load());
        QVERIFY(card.findChild<Banner*>()->isHidden());
        QVERIFY(last->text().endsWith(ProfileDao().load().lastBackupAt));
    }

    void aBackupThatCannotBeMadeSaysWhy()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Backup failed"_s));
        BackupCard card;
        ModalAnswerer answers(Hands::choosePath(AppPaths::voucherAssetsDir()));
        answers.expectButton(u"确定"_s);
        press(card, u"立即备份"_s);
        QCOMPARE(answers.seen().at(1).title, u"备份失败"_s);
        QCOMPARE(answers.seen().at(1).text,
            u"备份目标目录不可用：%1"_s.arg(AppPaths::voucherAssetsDir()));
    }

    void aBackupWhoseTimeCannotBeNotedCountsAndSaysSo()
    {
        const QTemporaryDir dir;
        QVERIFY(TestDatabase::refuseUpdates(u"company_profile"_s));
        BackupCard card;
        ModalAnswerer answers(Hands::choosePath(dir.path()));
        answers.expectButton(u"关闭"_s);
        press(card, u"立即备份"_s);
        QCOMPARE(answers.seen().at(1).title, u"备份完成"_s);
        QVERIFY(answers.seen().at(1).text.endsWith(u"备份完成但备份时间未能写入档案"_s));
    }

    void aFolderThatIsNoBackupIsRefused()
    {
        const QTemporaryDir dir;
        BackupCard card;
        ModalAnswerer answers(Hands::choosePath(dir.path()));
        answers.expectButton(u"确定"_s);
        press(card, u"从备份恢复"_s);
        QCOMPARE(answers.seen().at(1).title, u"不是有效备份"_s);
        QCOMPARE(
            answers.seen().at(1).text, u"缺少备份清单 backup_manifest.txt，不是有效备份目录"_s);
    }

    void thePreviewComparesAndTheQuestionMayBeDeclined()
    {
        const QTemporaryDir dir;
        BackupCard card;
        ModalAnswerer answers(Hands::choosePath(backupOfEarlierDays(dir)));
        answers.expectButton(u"继续恢复"_s);
        answers.expect([](QDialog* dialog) {
            QVERIFY(qobject_cast<QPushButton*>(ModalAnswerer::buttonOf(dialog, u"取消"_s))
                        ->isDefault());
            dialog->reject();
        });
        press(card, u"从备份恢复"_s);
        for (const QString& part : { u"旧公司"_s, u"新公司"_s, u"2025-05-06"_s, u"手动备份"_s })
            QVERIFY2(answers.seen().at(1).text.contains(part), qUtf8Printable(part));
        QCOMPARE(answers.seen().at(2).title, u"从备份恢复"_s);
        QCOMPARE(answers.seen().at(2).text,
            u"恢复将用所选备份【覆盖当前全部数据】。\n\n系统会先把当前数据自动备份到：\n%1\n\n"
            "恢复完成后软件将自动重启。确认恢复？"_s.arg(AppPaths::autoBackupBeforeRestoreDir()));
        QCOMPARE(company(), u"新公司"_s);
        QCOMPARE(foldersIn(AppPaths::autoBackupBeforeRestoreDir()), QStringList());
    }

    void aRestoreThatFailsNamesTheSafetyCopy()
    {
        const QTemporaryDir dir;
        const QString folder = backupOfEarlierDays(dir);
        QVERIFY(TestFile::put(folder + u"/brixa.db"_s, "no database"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Restore failed"_s));
        BackupCard card;
        const QSignalSpy restart(&card, &BackupCard::restartRequested);
        ModalAnswerer answers(Hands::choosePath(folder));
        answers.expectButton(u"继续恢复"_s);
        answers.expectButton(u"确认恢复（覆盖当前数据）"_s);
        answers.expectButton(u"确定"_s);
        press(card, u"从备份恢复"_s);
        QVERIFY(answers.seen().at(1).text.contains(u"备份中的数据库无法使用"_s));
        QCOMPARE(answers.seen().at(3).title, u"恢复失败"_s);
        const QString copies = AppPaths::autoBackupBeforeRestoreDir();
        QVERIFY(answers.seen().at(3).text.endsWith(
            u"\n\n若数据异常，可从自动备份目录取回：\n%1/%2"_s.arg(
                copies, foldersIn(copies).value(0))));
        QCOMPARE(restart.count(), 0);
        QCOMPARE(company(), u"新公司"_s);
    }

    void aDatabaseThatCannotBeOpenedAgainEndsTheProgram()
    {
        BackupCard card;
        const QSignalSpy end(&card, &BackupCard::endRequested);
        const QSignalSpy status(&card, &BackupCard::statusChanged);
        ModalAnswerer answers(u"确定"_s);
        card.tellOfRestore({ .message = u"磁盘故障"_s,
            .autoBackupFolder = u"/somewhere/else"_s,
            .databaseOpen = false });
        QVERIFY(answers.seen().first().text.startsWith(
            u"磁盘故障\n\n若数据异常，可从自动备份目录取回：\n/somewhere/else\n\n"_s));
        QCOMPARE(end.count(), 1);
        QCOMPARE(status.count(), 0);
    }
};

static const RegisteredTest<TestBackupCard> registered;

#include "TestBackupCard.moc"
