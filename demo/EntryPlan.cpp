#include "EntryPlan.h"

#include "core/TextRules.h"
#include "DemoCompany.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

// What comes and goes now and then.
struct SmallRow {
    QStringView summary;
    QStringView payee;
    qint64 fen;
    qint64 spreadFen;
    bool invoiced;
};

namespace {

constexpr qint64 yuan = 100;

using enum Category;

// A payment that comes back every `everyMonths` months.
struct RegularRow {
    int day;
    QStringView summary;
    QStringView payee;
    Category category;
    qint64 fen;
    qint64 spreadFen;
    int everyMonths;
    bool invoiced;
    int firstMonth = 1;
};

constexpr auto regularRows = std::to_array<RegularRow>({
    { 3, u"办公室房租", u"杭州文三创意园物业管理有限公司", BusinessExpense, 8'600 * yuan, 0, 1,
        true },
    { 5, u"物业水电费", u"杭州文三创意园物业管理有限公司", BusinessExpense, 560 * yuan, 180 * yuan,
        1, false },
    { 5, u"对公账户管理费", u"示范商业银行杭州文三支行", Other, 50 * yuan, 0, 1, false },
    { 6, u"设计软件订阅费", u"上海绘图软件服务有限公司", BusinessExpense, 1'280 * yuan, 0, 1,
        true },
    { 6, u"云盘与项目协作服务费", u"杭州云协作科技有限公司", BusinessExpense, 298 * yuan, 0, 1,
        false },
    { 8, u"宽带与固定电话费", u"杭州城市通信有限公司", BusinessExpense, 268 * yuan, 0, 1, false },
    { 10, u"工资：周沐（设计师）", u"周沐", Salary, 12'500 * yuan, 600 * yuan, 1, false },
    { 10, u"工资：陈与（插画师）", u"陈与", Salary, 9'800 * yuan, 500 * yuan, 1, false },
    { 10, u"工资：何苗（项目助理）", u"何苗", Salary, 7'600 * yuan, 300 * yuan, 1, false },
    { 10, u"工资：林岚（法定代表人）", u"林岚", Salary, 10'000 * yuan, 0, 1, false },
    { 12, u"社会保险费（单位与个人部分）", u"国家税务总局杭州市西湖区税务局", Salary, 9'260 * yuan,
        60 * yuan, 1, false },
    { 12, u"住房公积金", u"杭州住房公积金管理中心", Salary, 4'320 * yuan, 0, 1, false },
    { 14, u"代扣代缴个人所得税", u"国家税务总局杭州市西湖区税务局", TaxFee, 486 * yuan, 90 * yuan,
        1, false },
    { 15, u"增值税及附加", u"国家税务总局杭州市西湖区税务局", TaxFee, 3'240 * yuan, 1'400 * yuan, 3,
        false },
    { 16, u"企业所得税预缴", u"国家税务总局杭州市西湖区税务局", TaxFee, 2'180 * yuan, 900 * yuan, 3,
        false },
    { 20, u"代理记账服务费", u"杭州清算财务咨询有限公司", BusinessExpense, 600 * yuan, 0, 1, true },
    { 21, u"存款利息", u"示范商业银行杭州文三支行", Other, 86 * yuan, 40 * yuan, 3, false, 3 },
    { 26, u"快递费月结", u"杭州同城速运有限公司", BusinessExpense, 340 * yuan, 160 * yuan, 1,
        false },
});

constexpr auto smallPayments = std::to_array<SmallRow>({
    { u"图片素材授权费", u"北京图象素材有限公司", 680 * yuan, 320 * yuan, true },
    { u"打样与数码印刷", u"杭州彩墨印务有限公司", 1'460 * yuan, 700 * yuan, true },
    { u"外包插画稿酬", u"苏州一页文化工作室", 4'800 * yuan, 2'200 * yuan, true },
    { u"产品摄影服务费", u"杭州逆光摄影工作室", 5'200 * yuan, 1'800 * yuan, true },
    { u"办公用品采购", u"杭州西湖文具商行", 420 * yuan, 220 * yuan, false },
    { u"字体商用授权费", u"广州字间科技有限公司", 1'980 * yuan, 800 * yuan, true },
    { u"样品材料采购", u"义乌纸品包装有限公司", 860 * yuan, 420 * yuan, false },
    { u"差旅交通费（客户现场）", u"杭州同行差旅服务有限公司", 940 * yuan, 500 * yuan, false },
    { u"设备维修费", u"杭州极速数码维修部", 520 * yuan, 260 * yuan, false },
});

constexpr auto smallIncome = std::to_array<SmallRow>({
    { u"名片与画册设计费", u"杭州初一律师事务所", 3'600 * yuan, 900 * yuan, true },
    { u"活动海报设计费", u"杭州小满亲子活动中心", 2'400 * yuan, 800 * yuan, true },
    { u"标志延展修改费", u"绍兴青石酒业有限公司", 4'200 * yuan, 1'200 * yuan, true },
    { u"公众号版式设计费", u"嘉兴南湖茶社", 1'800 * yuan, 500 * yuan, false },
});

struct IncomeRow {
    QStringView day;
    QStringView project; // the beginning of its name
    QStringView stage;
    qint64 fen;
    bool explained; // with note and vouchers
};

constexpr auto incomeRows = std::to_array<IncomeRow>({
    { u"2024-11-12", u"云栖谷", u"首付款", 50'400 * yuan, true },
    { u"2025-01-16", u"云栖谷", u"二期款", 67'200 * yuan, true },
    { u"2025-01-20", u"南屿", u"首付款", 38'400 * yuan, true },
    { u"2025-03-07", u"白鹭", u"首付款", 64'000 * yuan, false },
    { u"2025-03-18", u"南屿", u"二期款", 28'800 * yuan, true },
    { u"2025-04-02", u"云栖谷", u"尾款", 50'400 * yuan, true },
    { u"2025-06-09", u"南屿", u"尾款", 20'000 * yuan, true },
    { u"2025-06-25", u"白鹭", u"尾款", 64'000 * yuan, true },
    { u"2025-07-14", u"木芽", u"首付款", 62'400 * yuan, true },
    { u"2025-07-21", u"青川", u"礼盒包装设计费", 36'000 * yuan, true },
    { u"2025-09-08", u"海潮", u"首付款", 35'200 * yuan, true },
    { u"2025-10-15", u"木芽", u"二期款", 46'800 * yuan, true },
    { u"2025-10-20", u"星野", u"首付款", 52'800 * yuan, false },
    { u"2025-11-20", u"海潮", u"二期款", 26'400 * yuan, true },
    { u"2025-12-10", u"星野", u"二期款", 39'600 * yuan, true },
});

// Money between owner and company.
struct OwnerRow {
    QStringView day;
    QStringView summary;
    Category category;
    qint64 fen;
    QStringView mark; // of the decision that covers it
    QStringView note;
};

constexpr auto ownerRows = std::to_array<OwnerRow>({
    { u"2024-12-18", u"报销差旅费（上海客户拜访）", ExpenseReimburse, 2'186 * yuan, u"",
        u"附车票与住宿发票" },
    { u"2025-02-10", u"股东借款转入（周转）", ShareholderIn, 50'000 * yuan, u"loan",
        u"春节后回款延迟，股东借款周转" },
    { u"2025-02-17", u"股东借款转入（周转）", ShareholderIn, 30'000 * yuan, u"loan",
        u"第二笔，用于支付外包稿酬" },
    { u"2025-03-03", u"股东借款转入（周转）", ShareholderIn, 20'000 * yuan, u"loan",
        u"第三笔，用于支付印刷打样" },
    { u"2025-04-18", u"报销样品采购款", ExpenseReimburse, 1'362 * yuan, u"", u"附购物发票三张" },
    { u"2025-06-18", u"报销客户招待费", ExpenseReimburse, 986 * yuan, u"", u"附餐饮发票" },
    { u"2025-08-05", u"备用金拨付（展会搭建）", ShareholderOut, 15'000 * yuan, u"float",
        u"设计周展位搭建备用金" },
    { u"2025-08-18", u"备用金拨付（展会搭建）", ShareholderOut, 20'000 * yuan, u"float",
        u"设计周展位二次搭建" },
    { u"2025-09-02", u"备用金余款退回", ShareholderIn, 10'000 * yuan, u"return",
        u"展会备用金结余退回公司" },
    { u"2025-10-17", u"报销摄影棚租金", ExpenseReimburse, 1'680 * yuan, u"", u"附租赁发票" },
    { u"2025-10-27", u"归还股东借款（部分）", ShareholderOut, 50'000 * yuan, u"repay",
        u"归还二月借款第一笔" },
    { u"2025-11-19", u"转股东备用金", ShareholderOut, 15'000 * yuan, u"", u"" },
    { u"2025-11-27", u"代收客户款转入公司账户", ShareholderIn, 6'800 * yuan, u"",
        u"对应十一月二十六日个人微信收款" },
    { u"2025-11-28", u"转股东备用金", ShareholderOut, 20'000 * yuan, u"", u"" },
    { u"2025-12-05", u"股东退回备用金", ShareholderIn, 10'000 * yuan, u"", u"" },
    { u"2025-12-12", u"转股东备用金", ShareholderOut, 18'000 * yuan, u"", u"年底客户礼品采购" },
    { u"2025-12-16", u"报销市内交通费", ExpenseReimburse, 412 * yuan, u"", u"附打车发票十二张" },
});

// What the rules are there for.
struct CaseRow {
    QStringView day;
    QStringView summary;
    QStringView counterparty;
    Direction direction;
    AccountType account;
    Category category;
    qint64 fen;
    QStringView note;
    QStringView mark;
};

constexpr auto caseRows = std::to_array<CaseRow>({
    { u"2025-05-14", u"打样费（个人支付宝支付）", u"杭州彩墨印务有限公司", Direction::Out,
        AccountType::Private, BusinessExpense, 2'360 * yuan, u"对公转账额度不足，先由个人垫付",
        u"" },
    { u"2025-06-06", u"包装设计尾款（微信收款）", u"宁波南屿咖啡有限公司", Direction::In,
        AccountType::Private, BusinessIncome, 8'800 * yuan, u"客户误付至个人微信", u"chat" },
    { u"2025-08-21", u"小程序图标设计费（微信收款）", u"嘉兴南湖茶社", Direction::In,
        AccountType::Private, BusinessIncome, 3'500 * yuan, u"", u"chat" },
    { u"2025-09-17", u"采购摄影与灯光设备", u"杭州光影器材有限公司", Direction::Out,
        AccountType::Company, BusinessExpense, 58'000 * yuan, u"设备", u"" },
    { u"2025-09-23", u"设计周展位定金（个人银行卡支付）", u"杭州会展服务有限公司", Direction::Out,
        AccountType::Private, BusinessExpense, 4'200 * yuan, u"", u"" },
    { u"2025-11-26", u"活动主视觉设计费（微信收款）", u"杭州小满亲子活动中心", Direction::In,
        AccountType::Private, BusinessIncome, 6'800 * yuan,
        u"客户误转个人微信，次日已全额转入对公账户", u"lowered" },
    { u"2025-11-25", u"预付年会场地费", u"杭州湖畔酒店管理有限公司", Direction::Out,
        AccountType::Company, BusinessExpense, 12'000 * yuan, u"", u"raised" },
    { u"2025-12-03", u"礼盒打样加急费（个人支付宝支付）", u"义乌纸品包装有限公司", Direction::Out,
        AccountType::Private, BusinessExpense, 1'880 * yuan, u"", u"" },
    { u"2025-12-15", u"服务器与显示器采购", u"杭州极速数码科技有限公司", Direction::Out,
        AccountType::Company, BusinessExpense, 52'600 * yuan, u"", u"" },
});

const QString owner = u"林岚"_s;

AccountType accountOf(QStringView counterparty)
{
    if (counterparty == owner)
        return AccountType::Private;
    // Names of people are short; whose account theirs is the ledger cannot tell.
    return counterparty.size() > 4 ? AccountType::Company : AccountType::Unknown;
}

Direction directionOf(Category category)
{
    return category == ShareholderIn ? Direction::In : Direction::Out;
}

} // namespace

EntryPlan::EntryPlan(const DemoCompany& company)
    : m_company(company)
{
}

QList<DemoEntry> EntryPlan::between(QDate from, QDate to)
{
    m_entries.clear();
    // Every month is drawn, so that a shorter plan holds the same entries as a longer one.
    for (QDate month(2024, 11, 1); month <= to; month = month.addMonths(1))
        addMonth(month);
    addProjectIncome();
    addOwnerFlows();
    addRiskCases();
    const auto outside = [&](const DemoEntry& each) {
        return each.entry.transDate < from || each.entry.transDate > to;
    };
    m_entries.removeIf(outside);
    std::stable_sort(
        m_entries.begin(), m_entries.end(), [](const DemoEntry& a, const DemoEntry& b) {
            return a.entry.transDate < b.entry.transDate;
        });
    return m_entries;
}

void EntryPlan::addMonth(QDate month)
{
    for (const RegularRow& row : regularRows) {
        if ((month.month() - row.firstMonth) % row.everyMonths != 0)
            continue;
        const Direction direction = row.summary == u"存款利息" ? Direction::In : Direction::Out;
        DemoEntry& added = add(month.addDays(row.day - 1), row.summary, row.payee, direction,
            row.category, varied(row.fen, row.spreadFen));
        if (row.category == TaxFee || row.invoiced)
            added.vouchers += VoucherType::BankReceipt;
        if (row.invoiced && month.month() % 2 == 0)
            added.vouchers += VoucherType::Invoice;
    }
    addSmallPayments(month);
    addSmallIncome(month);
    // The monthly service that one client has agreed on.
    if (month >= QDate(2025, 1, 1)) {
        const Project& project = m_company.project(u"青川");
        DemoEntry& added = add(month.addDays(24), u"年度视觉服务月度服务费", project.clientName,
            Direction::In, BusinessIncome, 20'000 * yuan);
        added.entry.projectId = project.id;
        added.vouchers = { VoucherType::BankReceipt };
    }
}

void EntryPlan::addSmallPayments(QDate month)
{
    const int count = m_random.bounded(6, 10);
    for (int i = 0; i < count; ++i) {
        const SmallRow& row = anyOf(smallPayments);
        DemoEntry& added = addSmall(month, row, Direction::Out, BusinessExpense);
        // Half of it is bought for a project that is under way.
        const Project& project = anyOf(m_company.projects());
        const QDate day = added.entry.transDate;
        if (project.startDate <= day && (!project.endDate.isValid() || day <= project.endDate))
            added.entry.projectId = project.id;
        if (row.invoiced)
            added.vouchers += VoucherType::Invoice;
    }
}

void EntryPlan::addSmallIncome(QDate month)
{
    const int count = m_random.bounded(2, 4);
    for (int i = 0; i < count; ++i) {
        const SmallRow& row = anyOf(smallIncome);
        DemoEntry& added = addSmall(month, row, Direction::In, BusinessIncome);
        if (row.invoiced)
            added.vouchers = { VoucherType::BankReceipt, VoucherType::Invoice };
    }
}

void EntryPlan::addProjectIncome()
{
    for (const IncomeRow& row : incomeRows) {
        const Project& project = m_company.project(row.project);
        DemoEntry& added = add(TextRules::dateFromText(row.day),
            u"%1%2"_s.arg(project.name, row.stage.toString()), project.clientName, Direction::In,
            BusinessIncome, row.fen);
        added.entry.projectId = project.id;
        if (row.explained) {
            added.entry.note = u"按合同约定支付%1"_s.arg(row.stage.toString());
            added.vouchers = { VoucherType::BankReceipt, VoucherType::Invoice };
        }
    }
}

void EntryPlan::addOwnerFlows()
{
    for (const OwnerRow& row : ownerRows) {
        DemoEntry& added = add(TextRules::dateFromText(row.day), row.summary, owner,
            directionOf(row.category), row.category, row.fen);
        added.entry.note = row.note.toString();
        added.mark = row.mark.toString();
        if (!row.note.isEmpty())
            added.vouchers = { VoucherType::BankReceipt };
    }
}

void EntryPlan::addRiskCases()
{
    for (const CaseRow& row : caseRows) {
        DemoEntry& added = add(TextRules::dateFromText(row.day), row.summary, row.counterparty,
            row.direction, row.category, row.fen);
        added.entry.ownerAccountType = row.account;
        added.entry.note = row.note.toString();
        added.mark = row.mark.toString();
        if (row.mark == u"chat" || row.mark == u"lowered")
            added.vouchers = { VoucherType::Chat };
    }
}

qint64 EntryPlan::varied(qint64 fen, qint64 spreadFen)
{
    if (spreadFen == 0)
        return fen;
    return fen + m_random.bounded(-spreadFen, spreadFen);
}

DemoEntry& EntryPlan::addSmall(
    QDate month, const SmallRow& row, Direction direction, Category category)
{
    // Drawn one after the other: as arguments, each compiler would draw them in an order of its
    // own.
    const qint64 fen = varied(row.fen, row.spreadFen);
    const QDate day = month.addDays(m_random.bounded(28));
    return add(day, row.summary, row.payee, direction, category, fen);
}

DemoEntry& EntryPlan::add(QDate day, QStringView summary, QStringView counterparty,
    Direction direction, Category category, qint64 fen)
{
    DemoEntry planned;
    planned.entry = { .transDate = day,
        .summary = summary.toString(),
        .direction = direction,
        .amountFen = fen,
        .counterpartyName = counterparty.toString(),
        .counterpartyAccountType = accountOf(counterparty),
        .category = category };
    m_entries += planned;
    return m_entries.last();
}
