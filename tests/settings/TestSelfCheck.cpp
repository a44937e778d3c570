#include "app/PageSwitchSuite.h"
#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "pages/settings/SelfCheckCard.h"
#include "selfcheck/SelfCheck.h"
#include "services/documents/DocumentService.h"
#include "services/SelfCheckState.h"
#include "services/vouchers/VoucherService.h"
#include "support/DatabaseTestCase.h"
#include "support/Hands.h"
#include "support/TestDatabase.h"
#include "support/TestFile.h"
#include "support/TestLedger.h"

#include <QDirIterator>
#include <QLabel>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

QMap<QString, QByteArray> tree(const QString& folder)
{
    QMap<QString, QByteArray> content;
    QDirIterator items(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
        QDirIterator::Subdirectories);
    while (items.hasNext()) {
        const QString path = items.next();
        content.insert(path, items.fileInfo().isFile() ? TestFile::bytesOf(path) : QByteArray());
    }
    return content;
}

// An owner's ledger with something in every table and folder.
bool fillLedger()
{
    const qint64 project = TestLedger::addProject(u"展厅设计"_s);
    if (!TestLedger::storeCompany() || project == 0)
        return false;
    const qint64 lent = TestLedger::add(
        TestLedger::entry(u"2025-01-03"_s, Category::ShareholderIn, Direction::In));
    Transaction risky = TestLedger::entry(u"2025-02-03"_s, Category::BusinessIncome, Direction::In);
    risky.ownerAccountType = AccountType::Private;
    const qint64 received = TestLedger::add(risky);
    const QTemporaryDir dir;
    const QString receipt = dir.filePath(u"回单.pdf"_s);
    return TestFile::put(receipt, "%PDF-1.4 receipt")
        && VoucherService::importVoucher(
            { .sourcePath = receipt, .voucherDate = QDate(2025, 2, 3) }, project, { received })
               .ok
        && DocumentService()
               .generateFundDecision({ .direction = Direction::In,
                   .fundNature = u"借款"_s,
                   .transactionIds = { lent },
                   .decisionDate = QDate(2025, 1, 4) })
               .ok;
}

QString failuresOf(const SelfCheckReport& report)
{
    QStringList failures;
    for (const SelfCheckResult& suite : report.suites) {
        if (!suite.ok)
            failures += suite.name + u'：' + suite.message;
    }
    return failures.join(u'\n');
}

} // namespace

class TestSelfCheck final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void init()
    {
        DatabaseTestCase::init();
        SelfCheck::instance().setWindowSuite({ u"页面切换"_s, checkPageSwitching });
        QVERIFY(fillLedger());
    }

    void aSoundLedgerPassesAndStaysByteForByte()
    {
        const QSignalSpy finished(&SelfCheck::instance(), &SelfCheck::finished);
        QVERIFY(DatabaseManager::instance().checkpoint());
        const QStringList content = TestDatabase::dump();
        QVERIFY(content.join(u'\n').contains(u"sqlite_sequence"_s));
        const QByteArray database = TestFile::bytesOf(AppPaths::databasePath());
        const auto vouchers = tree(AppPaths::voucherAssetsDir());
        const auto exports = tree(AppPaths::exportsDir());
        QVERIFY(!vouchers.isEmpty() && !exports.isEmpty());

        SelfCheckCard card;
        card.refresh();
        card.show();
        Hands::press(card, u"立即自检"_s);
        QCOMPARE(failuresOf(SelfCheck::lastResult()), QString());
        QCOMPARE(SelfCheck::lastResult().suites.size(), 12);
        QCOMPARE(finished.count(), 1);
        QVERIFY(
            card.findChild<QLabel*>(u"selfCheckState"_s)->text().contains(u"12 项，全部正常"_s));
        QVERIFY(card.findChild<QWidget*>(u"selfCheckList"_s)->isVisible());
        QVERIFY(!SelfCheckState::hasFailed());

        QCOMPARE(TestDatabase::dump(), content);
        QVERIFY(DatabaseManager::instance().checkpoint());
        QVERIFY2(TestFile::bytesOf(AppPaths::databasePath()) == database, "the file itself");
        QVERIFY(tree(AppPaths::voucherAssetsDir()) == vouchers);
        QVERIFY(tree(AppPaths::exportsDir()) == exports);
    }

    void aPlantedFaultIsFoundAndNamed_data()
    {
        addColumns<QStringList, QString, QString>("statements", "suite", "message");
        const QString schema = u"数据库结构"_s;
        addCase("an index is missing", QStringList { u"DROP INDEX idx_tx_date"_s }, schema,
            u"缺少索引 idx_tx_date"_s);
        addCase("a trigger is missing",
            QStringList { u"DROP TRIGGER trg_transactions_delete_links"_s }, u"关联关系"_s,
            u"删除流水后关联没有一并清除"_s);
        const QStringList spy { u"CREATE TRIGGER spy AFTER INSERT ON transactions BEGIN UPDATE "
                                "transactions SET amount_fen = 1 WHERE id = NEW.id; END"_s };
        addCase("a strange trigger lies there", spy, schema, u"触发器 spy"_s);
        addCase("a trigger changes amounts", spy, u"数据读写"_s, u"金额"_s);
        addCase("a code is unknown",
            QStringList { u"PRAGMA ignore_check_constraints = ON"_s,
                u"UPDATE transactions SET category = 'bribe' WHERE id = 1"_s },
            u"代码表"_s, u"transactions.category 中有未知代码 bribe"_s);
        addCase("a risk level was changed past the rules",
            QStringList { u"UPDATE transactions SET risk_auto_level = 'normal' WHERE id = 2"_s },
            u"风险规则"_s, u"#2"_s);
        addCase("a voucher's file is gone",
            QStringList { u"UPDATE vouchers SET stored_path = 'voucher_assets/no.pdf'"_s },
            u"凭证文件"_s, u"缺失"_s);
        addCase("a link leads nowhere",
            QStringList { u"UPDATE entity_links SET target_id = 99 WHERE target_type = "
                          "'project'"_s },
            u"关联关系"_s, u"1 条关联指向不存在的项目"_s);
    }

    void aPlantedFaultIsFoundAndNamed()
    {
        QFETCH(QStringList, statements);
        QFETCH(QString, suite);
        QFETCH(QString, message);
        QCOMPARE(TestDatabase::run(statements), QString());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Data self-check result:"_s));
        const SelfCheckReport report = SelfCheck::instance().run();
        const QString failures = failuresOf(report);
        static const QString line = u"(^|\n)%1：[^\n]*%2"_s;
        QVERIFY2(failures.contains(
                     QRegularExpression(line.arg(suite, QRegularExpression::escape(message)))),
            qUtf8Printable(failures));
        QVERIFY(SelfCheckState::hasFailed());

        SelfCheckCard card;
        card.refresh();
        const auto labels = card.findChildren<QLabel*>();
        QVERIFY2(std::any_of(labels.begin(), labels.end(),
                     [&](const QLabel* label) { return label->text().contains(message); }),
            "the card shows what was found");
    }

    void aFileWithoutVoucherIsRemarkedAndNoFault()
    {
        const QString stray = AppPaths::voucherAssetsDir() + u"/stray.pdf"_s;
        QVERIFY(TestFile::put(stray, "left by a crash"));
        const SelfCheckReport report = SelfCheck::instance().run();
        QCOMPARE(failuresOf(report), QString());
        const auto remarked = [](const SelfCheckResult& suite) {
            return suite.message.contains(u"1 个文件没有凭证记录（如 voucher_assets/stray.pdf）"_s);
        };
        QVERIFY(std::any_of(report.suites.begin(), report.suites.end(), remarked));
        QVERIFY(QFile::exists(stray));
    }

    void theCheckAlsoGoesOnInPieces()
    {
        const QSignalSpy finished(&SelfCheck::instance(), &SelfCheck::finished);
        int pieces = 1;
        while (!SelfCheck::instance().advance())
            ++pieces;
        QCOMPARE(pieces, 12);
        QCOMPARE(finished.count(), 1);
        QCOMPARE(SelfCheck::lastResult().suites.size(), 12);
        QCOMPARE(failuresOf(SelfCheck::lastResult()), QString());
    }

    void aLargeLedgerIsNotEvaluatedAnew()
    {
        QCOMPARE(TestLedger::addMany(2001), QString());
        const SelfCheckReport report = SelfCheck::instance().run();
        QCOMPARE(failuresOf(report), QString());
        QVERIFY(report.suites.at(5).message.contains(u"未全部重新判断"_s));
    }
};

static const RegisteredTest<TestSelfCheck> registered;

#include "TestSelfCheck.moc"
