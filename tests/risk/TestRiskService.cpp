#include "db/DatabaseManager.h"
#include "db/DbTransaction.h"
#include "db/DocumentDao.h"
#include "db/LinkDao.h"
#include "db/TransactionDao.h"
#include "services/risk/RiskService.h"
#include "support/DatabaseTestCase.h"
#include "support/TestDatabase.h"
#include "support/TestLedger.h"

#include <QRegularExpression>

#include <array>
#include <map>
#include <random>
#include <set>

using namespace Qt::StringLiterals;
using TestDatabase::run;
using TestLedger::add;
using TestLedger::addFundDecision;
using TestLedger::autoRisk;
using TestLedger::entry;

namespace {

const QString failAtRow3 = u"CREATE TEMP TRIGGER no BEFORE UPDATE ON transactions WHEN NEW.id = 3 "
                           "BEGIN SELECT RAISE(%1, 'not this one'); END"_s;

// The evaluation's lines in the log since the last call.
class LogLines final {
public:
    LogLines()
    {
        s_lines.clear();
        m_before = qInstallMessageHandler(&LogLines::take);
    }
    ~LogLines() { qInstallMessageHandler(m_before); }
    LogLines(const LogLines&) = delete;
    LogLines& operator=(const LogLines&) = delete;

    QStringList infos() const { return s_lines.filter(QRegularExpression(u"^info "_s)); }
    QStringList warnings() const { return s_lines.filter(QRegularExpression(u"^warning "_s)); }

private:
    static void take(QtMsgType type, const QMessageLogContext&, const QString& text)
    {
        s_lines += (type == QtInfoMsg ? u"info "_s : u"warning "_s) + text;
    }

    static inline QStringList s_lines;
    QtMessageHandler m_before = nullptr;
};

qint64 addTransfer(const QString& date, Direction direction = Direction::Out)
{
    return add(
        entry(date, direction == Direction::In ? Category::ShareholderIn : Category::ShareholderOut,
            direction));
}

QStringList autoRisks()
{
    QStringList risks;
    for (const QString& id : TestDatabase::rows(u"SELECT id FROM transactions ORDER BY id"_s))
        risks += autoRisk(id.toLongLong());
    return risks;
}

bool setThresholds(qint64 largeFen, int days, int count)
{
    // The layout refuses senseless values; files from elsewhere may hold them.
    return run({ u"PRAGMA ignore_check_constraints = ON"_s,
                   u"UPDATE company_profile SET large_amount_fen = %1, frequent_window_days = %2, "
                   "frequent_count = %3"_s.arg(
                       QString::number(largeFen), QString::number(days), QString::number(count)),
                   u"PRAGMA ignore_check_constraints = OFF"_s })
        .isEmpty();
}

// A ledger with one entry per row, each large and unexplained.
bool addLargeEntries(int count)
{
    for (int i = 1; i <= count; ++i) {
        if (!add(entry(u"2025-01-0%1"_s.arg(i), Category::Other, Direction::In, 6'000'000)))
            return false;
    }
    return true;
}

constexpr std::array candidates { Category::ShareholderIn, Category::ShareholderOut,
    Category::ExpenseReimburse };

// One entry of a random ledger, and what the rules say of it when they are read aloud.
struct Case {
    Transaction entry;
    bool isCovered = false;
    int vouchers = 0;
    std::optional<RiskLevel> override;
};

struct Thresholds {
    qint64 largeFen;
    int days;
    int count;
};

bool isCandidate(const Case& item)
{
    return std::count(std::begin(candidates), std::end(candidates), item.entry.category) > 0;
}

std::map<size_t, int> plainGroups(const std::vector<Case>& ledger, const Thresholds& thresholds)
{
    std::map<size_t, int> sizes;
    for (size_t last = 0; last < ledger.size(); ++last) {
        if (!isCandidate(ledger[last]))
            continue;
        std::set<size_t> group;
        for (size_t i = 0; i < ledger.size(); ++i) {
            const qint64 days = ledger[i].entry.transDate.daysTo(ledger[last].entry.transDate);
            const bool isNotLater = days > 0 || (days == 0 && i <= last);
            if (isCandidate(ledger[i]) && isNotLater && days < thresholds.days)
                group.insert(i);
        }
        const int size = static_cast<int>(group.size());
        for (const size_t i : group) {
            if (size >= thresholds.count && !ledger[i].isCovered)
                sizes[i] = std::max(sizes[i], size);
        }
    }
    return sizes;
}

QString plainRisk(const Case& item, int groupSize, const Thresholds& thresholds)
{
    const Transaction& entry = item.entry;
    const bool isPrivate = entry.ownerAccountType == AccountType::Private;
    QStringList rules;
    if (isPrivate && entry.category == Category::BusinessIncome && entry.direction == Direction::In)
        rules += u"R1-1"_s;
    if (isPrivate && entry.category == Category::BusinessExpense
        && entry.direction == Direction::Out)
        rules += u"R1-2"_s;
    QString level = rules.isEmpty() ? u"normal"_s : u"high"_s;
    if (groupSize > 0) {
        rules += u"R2(%1)"_s.arg(groupSize);
        level = level == u"high"_s ? level : u"medium"_s;
    }
    if (entry.amountFen >= thresholds.largeFen && item.vouchers == 0 && entry.note.size() < 5) {
        rules += u"R3"_s;
        level = level == u"normal"_s ? u"low"_s : level;
    }
    return level + u'|' + rules.join(u';');
}

class RandomLedgers final {
public:
    int pick(int below) { return static_cast<int>(m_random() % static_cast<unsigned>(below)); }

    std::vector<Case> make()
    {
        std::vector<Case> ledger;
        const int spread = 1 + pick(40);
        for (int i = 2 + pick(14); i > 0; --i)
            ledger.push_back(makeCase(spread));
        return ledger;
    }

private:
    Case makeCase(int spread)
    {
        Case item;
        item.entry = entry(QString(), candidates.at(static_cast<size_t>(pick(3))),
            pick(2) ? Direction::In : Direction::Out, 90 + pick(20));
        item.entry.transDate = QDate(2025, 2, 20).addDays(pick(spread));
        if (pick(4) == 0)
            item.entry.category = pick(2) ? Category::BusinessIncome : Category::BusinessExpense;
        if (pick(3) == 0)
            item.entry.ownerAccountType = AccountType::Private;
        item.entry.note = u"说明说明说明"_s.left(pick(7));
        item.isCovered = pick(4) == 0;
        item.vouchers = pick(3) == 0 ? 1 + pick(2) : 0;
        if (pick(5) == 0)
            item.override = allValues<RiskLevel>().at(static_cast<size_t>(pick(4)));
        return item;
    }

    std::mt19937 m_random { 11 };
};

bool store(const std::vector<Case>& ledger)
{
    // Nothing here is remembered by the stores, so one file serves all ledgers.
    if (!run({ u"DELETE FROM transactions"_s, u"DELETE FROM entity_links"_s,
                 u"DELETE FROM sqlite_sequence WHERE name = 'transactions'"_s })
             .isEmpty())
        return false;
    LinkDao links;
    TransactionDao entries;
    for (const Case& item : ledger) {
        const qint64 id = add(item.entry);
        bool done = id > 0;
        for (int voucher = 1; voucher <= item.vouchers; ++voucher)
            done = done && links.link(SourceType::Voucher, voucher, TargetType::Transaction, id);
        if (item.isCovered)
            done = done && links.link(SourceType::Document, 1, TargetType::Transaction, id);
        if (item.override)
            done = done && entries.setManualOverride(id, item.override, {});
        if (!done)
            return false;
    }
    return true;
}

} // namespace

class TestRiskService final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void anUnsavedEntryIsJudgedByTheStoredThreshold()
    {
        QVERIFY(setThresholds(10'050, 0, 0));
        const Transaction large = entry(u"2025-01-01"_s, Category::Other, Direction::In, 10'050);
        const auto result = RiskService().evaluateInstant(large, 0);
        QCOMPARE(result.level, RiskLevel::Low);
        QVERIFY(result.reasons.value(0).startsWith(u"大额转账（≥100.50元）"_s));
        QCOMPARE(RiskService().evaluateInstant(large, 1).level, RiskLevel::Normal);
        // Three transfers on a day are no group before they are stored.
        for (int i = 0; i < 3; ++i)
            QVERIFY(addTransfer(u"2025-01-01"_s));
        const Transaction fourth
            = entry(u"2025-01-01"_s, Category::ShareholderOut, Direction::Out, 100);
        QCOMPARE(RiskService().evaluateInstant(fourth, 0), RiskRules::RiskResult());
    }

    void theWholeLedgerIsJudged()
    {
        Transaction income
            = entry(u"2025-01-05"_s, Category::BusinessIncome, Direction::In, 5'000'000);
        income.ownerAccountType = AccountType::Private;
        QVERIFY(add(income));
        QVERIFY(addTransfer(u"2025-01-01"_s));
        QVERIFY(addTransfer(u"2025-01-15"_s, Direction::In));
        QVERIFY(add(entry(u"2025-01-30"_s, Category::ExpenseReimburse, Direction::Out, 5'000'000)));
        QVERIFY(add(entry(u"2025-01-02"_s, Category::Other, Direction::Out)));
        QTest::ignoreMessage(
            QtInfoMsg, "RiskService reevaluateAll done: 5 rows, 3 frequent-group flagged");
        RiskService().reevaluateAll();
        QCOMPARE(autoRisks(),
            (QStringList { u"high|R1-1;R3"_s, u"medium|R2(3)"_s, u"medium|R2(3)"_s,
                u"medium|R2(3);R3"_s, u"normal|"_s }));
        QCOMPARE(TestDatabase::row(u"SELECT COUNT(*) FROM transactions WHERE risk_level <> "
                                   "risk_auto_level OR risk_evaluated_at IS NULL"_s),
            u"0"_s);
    }

    void onlyAFundDecisionOverEveryRowClearsACluster()
    {
        for (int day = 1; day <= 4; ++day)
            QVERIFY(addTransfer(u"2025-03-0%1"_s.arg(day)));
        QVERIFY(addFundDecision({ 1, 3 }));
        RiskService().reevaluateAll();
        const QStringList half { u"normal|"_s, u"medium|R2(4)"_s, u"normal|"_s, u"medium|R2(4)"_s };
        QCOMPARE(autoRisks(), half);

        const qint64 second = addFundDecision({ 2, 4 });
        QVERIFY(second);
        RiskService().reevaluateAll();
        QCOMPARE(autoRisks(), QStringList(4, u"normal|"_s));

        QVERIFY(DocumentDao().remove(second));
        RiskService().reevaluateAll();
        QCOMPARE(autoRisks(), half);
    }

    void senselessThresholdsGiveWay()
    {
        QVERIFY(setThresholds(5'000'000, 0, -1));
        QVERIFY(addTransfer(u"2025-01-01"_s));
        QVERIFY(addTransfer(u"2025-01-15"_s));
        RiskService().reevaluateAll();
        QCOMPARE(autoRisks(), QStringList(2, u"normal|"_s));
        QVERIFY(addTransfer(u"2025-01-30"_s));
        RiskService().reevaluateAll();
        QCOMPARE(autoRisks(), QStringList(3, u"medium|R2(3)"_s));
        QVERIFY(TransactionDao().findById(1)->riskReasons.value(0).startsWith(u"近30天内"_s));
    }

    void brokenDatesBelongToNoGroup()
    {
        for (int day = 1; day <= 3; ++day)
            QVERIFY(addTransfer(u"2025-03-0%1"_s.arg(day)));
        for (int i = 0; i < 3; ++i)
            QVERIFY(addTransfer(u"2025-03-02"_s));
        QCOMPARE(run({ u"UPDATE transactions SET trans_date = '2025-3-2' WHERE id = 4"_s,
                     u"UPDATE transactions SET trans_date = '' WHERE id = 5"_s,
                     u"UPDATE transactions SET trans_date = '2025-02-30' WHERE id = 6"_s }),
            QString());
        RiskService().reevaluateAll();
        QCOMPARE(autoRisks(), QStringList(3, u"medium|R2(3)"_s) + QStringList(3, u"normal|"_s));
        QCOMPARE(TestDatabase::row(u"SELECT COUNT(risk_evaluated_at) FROM transactions"_s), u"6"_s);
    }

    void randomLedgersAgreeWithAPlainReading()
    {
        QVERIFY(addFundDecision({}));
        RandomLedgers ledgers;
        const DbTransaction unsaved; // no round reaches the disk
        QVERIFY(unsaved.isOpen());
        const LogLines log;
        for (int round = 0; round < 1'500; ++round) {
            const std::vector<Case> ledger = ledgers.make();
            const Thresholds thresholds { 85 + ledgers.pick(20), 1 + ledgers.pick(12),
                1 + ledgers.pick(5) };
            QVERIFY(store(ledger)
                && setThresholds(thresholds.largeFen, thresholds.days, thresholds.count));
            RiskService().reevaluateAll();
            auto sizes = plainGroups(ledger, thresholds);
            for (size_t i = 0; i < ledger.size(); ++i) {
                const auto id = static_cast<qint64>(i) + 1;
                QCOMPARE(autoRisk(id), plainRisk(ledger[i], sizes[i], thresholds));
                const auto stored = TransactionDao().findById(id);
                QCOMPARE(stored->riskLevel, ledger[i].override.value_or(stored->riskAutoLevel));
                const QString window = u"近%1天内"_s.arg(thresholds.days);
                QCOMPARE(stored->riskReasons.filter(window).isEmpty(), sizes[i] == 0);
            }
        }
        QCOMPARE(log.infos().size(), 1'500);
        QCOMPARE(log.warnings(), QStringList());
    }

    void aRowThatCannotBeWrittenEndsTheRun_data()
    {
        QTest::addColumn<bool>("inside");
        addCase("on its own", false);
        addCase("inside a larger unit", true);
    }

    void aRowThatCannotBeWrittenEndsTheRun()
    {
        QFETCH(bool, inside);
        QVERIFY(addLargeEntries(5));
        QCOMPARE(run({ failAtRow3.arg(u"ABORT") }), QString());
        const LogLines log;
        {
            std::optional<DbTransaction> outer;
            if (inside)
                outer.emplace();
            RiskService().reevaluateAll();
            QVERIFY(!outer || outer->commit());
        }
        // The newest entries come first.
        QCOMPARE(autoRisks(),
            (QStringList { u"normal|"_s, u"normal|"_s, u"normal|"_s, u"low|R3"_s, u"low|R3"_s }));
        QCOMPARE(log.warnings().size(), 2);
        QVERIFY(log.warnings().first().startsWith(u"warning SQL error: not this one"_s));
        QVERIFY(log.warnings().last().startsWith(
            u"warning RiskService: updateRisk failed for tx 3: not this one"_s));
        QCOMPARE(log.infos(), QStringList());
    }

    void whatSurroundsItDecidesWhetherItStays_data()
    {
        addColumns<bool, QString>("commits", "risk");
        addCase("committed", true, u"low|R3"_s);
        addCase("rolled back", false, u"normal|"_s);
    }

    void whatSurroundsItDecidesWhetherItStays()
    {
        QFETCH(bool, commits);
        QVERIFY(addLargeEntries(1));
        {
            DbTransaction outer;
            QVERIFY(outer.isOpen());
            RiskService().reevaluateAll();
            QVERIFY(outer.isOpen());
            QCOMPARE(autoRisk(1), u"low|R3"_s);
            QVERIFY(!commits || outer.commit());
        }
        QTEST(autoRisk(1), "risk");
    }

    void aLostTransactionIsRemarked()
    {
        QVERIFY(addLargeEntries(5));
        QCOMPARE(run({ failAtRow3.arg(u"ROLLBACK") }), QString());
        const LogLines log;
        RiskService().reevaluateAll();
        QCOMPARE(autoRisks(), QStringList(5, u"normal|"_s));
        QCOMPARE(log.warnings().size(), 5);
        QVERIFY(log.warnings().at(1).startsWith(
            u"warning RiskService: updateRisk failed for tx 3: "_s));
        QVERIFY(log.warnings().at(2).startsWith(u"warning Transaction commit failed: "_s));
        QVERIFY(log.warnings().at(3).startsWith(u"warning Transaction rollback failed: "_s));
        QVERIFY(log.warnings().at(4).startsWith(
            u"warning RiskService: the evaluation could not be stored: "_s));
        QCOMPARE(log.infos(), QStringList());
    }

    void rowsThatCannotBeReadLeaveTheLevelsBehind()
    {
        for (int day = 1; day <= 3; ++day)
            QVERIFY(addTransfer(u"2025-03-0%1"_s.arg(day)));
        // Without the table of links neither coverage nor voucher counts can be read.
        QCOMPARE(run({ u"ALTER TABLE entity_links RENAME TO hidden"_s }), QString());
        const LogLines log;
        RiskService().reevaluateAll();
        QVERIFY(log.warnings().last().startsWith(
            u"warning RiskService: the ledger cannot be read: "_s));
        QCOMPARE(log.infos(), QStringList());
        QVERIFY(RiskService::isBehind());
        QCOMPARE(autoRisks(), QStringList(3, u"normal|"_s));
    }

    void withoutDatabaseNothingHappens()
    {
        DatabaseManager::instance().close();
        QTest::ignoreMessage(
            QtWarningMsg, "RiskService: no transaction for the evaluation: 数据库未打开");
        RiskService().reevaluateAll();
    }
};

static const RegisteredTest<TestRiskService> registered;

#include "TestRiskService.moc"
