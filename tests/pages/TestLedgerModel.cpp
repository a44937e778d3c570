#include "pages/ledger/LedgerModel.h"
#include "pages/ledger/LedgerSort.h"
#include "services/figures/LedgerTexts.h"
#include "support/TestCase.h"
#include "support/TestLedger.h"

#include <QAbstractItemModelTester>

using namespace Qt::StringLiterals;

namespace {

Transaction named(qint64 id, const QString& summary, qint64 fen)
{
    Transaction entry
        = TestLedger::entry(u"2025-03-0%1"_s.arg(id), Category::BusinessIncome, Direction::In, fen);
    entry.id = id;
    entry.summary = summary;
    return entry;
}

QStringList rowOf(const QAbstractItemModel& model, int role)
{
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column)
        texts += model.index(0, column).data(role).toString();
    return texts;
}

} // namespace

class TestLedgerModel final : public TestCase {
    Q_OBJECT

private slots:
    void anEntryIsShownInTwelveColumns()
    {
        LedgerModel model;
        const QAbstractItemModelTester tester(
            &model, QAbstractItemModelTester::FailureReportingMode::QtTest);
        Transaction entry = named(7, u"尾款"_s, 123'456);
        entry.ownerAccountType = AccountType::Private;
        entry.counterpartyAccountType = AccountType::Private;
        entry.projectName = u"官网"_s;
        entry.voucherCount = 2;
        entry.riskLevel = RiskLevel::Low;
        entry.riskManualOverride = RiskLevel::Low;
        model.setEntries({ entry });
        QStringList headers;
        for (int column = 0; column < model.columnCount(); ++column)
            headers += model.headerData(column, Qt::Horizontal).toString();
        QCOMPARE(headers.join(u' '),
            u"日期 摘要 方向 金额(元) 本方账户 对方名称 对方账户 分类 关联项目 凭证 风险 操作"_s);
        QCOMPARE(rowOf(model, Qt::DisplayRole).join(u'|'),
            u"2025-03-07|尾款|收入|1,234.56|股东私户|对方|私人|经营收入|官网|2|预警|"_s);
        QCOMPARE(rowOf(model, Qt::AccessibleTextRole).mid(LedgerModel::Risk),
            QStringList({ u"预警 *"_s, u"编辑 生成决定书 删除"_s }));
    }

    void equalTextsKeepTheOrderOfTheSearch()
    {
        LedgerModel model;
        model.setEntries({ named(1, u"运费"_s, 300), named(2, u"安装"_s, 100),
            named(3, u"运费"_s, 200), named(4, u"报销"_s, 100) });
        LedgerSort sort(&model);
        const auto order = [&sort](int column, Qt::SortOrder direction) {
            sort.sort(column, direction);
            QString ids;
            for (int row = 0; row < sort.rowCount(); ++row)
                ids += sort.index(row, 0).data(LedgerModel::IdRole).toString();
            return ids;
        };
        QCOMPARE(order(LedgerModel::Summary, Qt::AscendingOrder), u"2413"_s);
        QCOMPARE(order(LedgerModel::Amount, Qt::DescendingOrder), u"1324"_s);
        QCOMPARE(order(LedgerModel::Date, Qt::DescendingOrder), u"4321"_s);
        QCOMPARE(order(-1, Qt::AscendingOrder), u"1234"_s);
    }

    void theRiskIsExplained_data()
    {
        addColumns<QStringList, bool, QString, QString>("reasons", "reviewed", "note", "expected");
        const QStringList two { u"甲"_s, u"乙"_s };
        addCase("no reason", QStringList(), false, u""_s, u""_s);
        addCase("reasons", two, false, u"不显示"_s, u"甲\n乙"_s);
        addCase("reviewed", two, true, u""_s, u"甲\n乙\n人工复核等级：预警"_s);
        addCase("with its note", QStringList { u"甲"_s }, true, u"已核对"_s,
            u"甲\n人工复核等级：预警\n复核说明：已核对"_s);
        addCase("without reasons", QStringList(), true, u" "_s, u"人工复核等级：预警"_s);
    }
    void theRiskIsExplained()
    {
        QFETCH(const QStringList, reasons);
        QFETCH(const bool, reviewed);
        QFETCH(const QString, note);
        Transaction entry;
        entry.riskReasons = reasons;
        entry.riskManualNote = note;
        if (reviewed)
            entry.riskManualOverride = RiskLevel::Low;
        QTEST(LedgerTexts::riskToolTip(entry), "expected");
    }
};

static const RegisteredTest<TestLedgerModel> registered;

#include "TestLedgerModel.moc"
