#include "pages/reports/ReportPage.h"

#include "core/Money.h"
#include "db/ProfileDao.h"
#include "pages/reports/FigureTableView.h"
#include "pages/reports/ReportCharts.h"
#include "pages/reports/ReportRange.h"
#include "pages/TrendBars.h"
#include "services/csv/CsvExport.h"
#include "services/DesktopFiles.h"
#include "services/documents/DocumentPdf.h"
#include "widgets/Banner.h"
#include "widgets/ButtonRole.h"
#include "widgets/Card.h"
#include "widgets/MessageBox.h"
#include "widgets/SaveFileDialog.h"
#include "widgets/ScrollColumn.h"
#include "widgets/StatCard.h"
#include "widgets/TextRole.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

using LedgerStatistics::Totals;

constexpr int spacing = 16;

Banner* hiddenBanner(BannerKind kind, const QString& objectName, QWidget* parent)
{
    auto* banner = new Banner(kind, parent);
    banner->setObjectName(objectName);
    banner->hide();
    return banner;
}

StatCard* addCard(QHBoxLayout* line, const QString& title, Token edge, QWidget* parent)
{
    auto* card = new StatCard(title, parent);
    card->setEdge(edge);
    line->addWidget(card);
    return card;
}

} // namespace

ReportPage::ReportPage(QWidget* parent)
    : IPage(u"统计报表"_s, parent)
    , m_range(new ReportRange(this))
    , m_problem(hiddenBanner(BannerKind::Warning, u"rangeProblem"_s, this))
    , m_unreadable(hiddenBanner(BannerKind::Danger, u"unreadable"_s, this))
{
    setObjectName(u"ReportPage"_s);
    m_unreadable->setText(
        u"报表数据没有读出来，因此不显示任何数字。请重试；仍有问题时请查看日志。"_s);
    m_unreadable->setAction(u"重试"_s);
    auto* scroll = new ScrollColumn(this);
    QVBoxLayout* column = scroll->column();
    column->addWidget(m_range);
    column->addWidget(m_problem);
    column->addWidget(m_unreadable);
    m_content = buildContent();
    column->addWidget(m_content);
    column->addStretch();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);

    connect(m_range, &ReportRange::changed, this, &ReportPage::refresh);
    connect(m_unreadable, &Banner::actionTriggered, this, &ReportPage::refresh);
    const auto addShortcut = [this](const QKeySequence& keys, auto slot) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, slot);
    };
    addShortcut(QKeySequence(Qt::Key_F5), &ReportPage::refresh);
    addShortcut(QKeySequence(Qt::CTRL | Qt::Key_E), &ReportPage::onExport);
    addShortcut(QKeySequence::Print, &ReportPage::onPrint);
}

QWidget* ReportPage::buildContent()
{
    auto* content = new QWidget(this);
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing);
    column->addLayout(buildCards());
    m_compared = new QLabel(content);
    m_compared->setObjectName(u"comparedDays"_s);
    m_compared->setTextFormat(Qt::PlainText);
    m_compared->setWordWrap(true);
    setTextRole(m_compared, TextRole::Hint);
    column->addWidget(m_compared);
    for (Card* card : { buildCategories(), buildAccounts(), buildRisks(), buildTrend() })
        column->addWidget(card);
    return content;
}

QLayout* ReportPage::buildCards()
{
    auto* line = new QHBoxLayout;
    line->setSpacing(spacing);
    m_income = addCard(line, u"收入"_s, Token::ChartIn, this);
    m_expense = addCard(line, u"支出"_s, Token::ChartOut, this);
    m_net = addCard(line, u"净额"_s, Token::ChartNet, this);
    m_count = addCard(line, u"笔数"_s, Token::Primary, this);
    return line;
}

template <typename Chart>
void ReportPage::addFigures(
    Card* card, Chart* chart, FigureTableView* table, void (ReportPage::*open)(int))
{
    card->body()->addWidget(chart);
    card->body()->addWidget(table);
    connect(chart, &Chart::activated, this, open);
    connect(table, &FigureTableView::rowActivated, this, open);
}

Card* ReportPage::buildCategories()
{
    auto* card = new Card(u"分类汇总"_s, this);
    card->setHint(u"条形表示收入与支出之和。点击条形，或在表中双击、按回车，可查看这些流水。"_s);
    m_categoryBars = new HBarChart(u"分类汇总图"_s, card);
    m_categories = new FigureTableView(u"分类汇总"_s, card);
    m_categories->setObjectName(u"categoryTable"_s);
    addFigures(card, m_categoryBars, m_categories, &ReportPage::openCategory);
    return card;
}

Card* ReportPage::buildAccounts()
{
    auto* card = new Card(u"账户对比"_s, this);
    card->setHint(u"公司的收支应当都在对公账户中。"_s);
    m_accounts = new FigureTableView(u"账户对比"_s, card);
    m_accounts->setObjectName(u"accountTable"_s);
    card->body()->addWidget(m_accounts);
    return card;
}

Card* ReportPage::buildRisks()
{
    auto* card = new Card(u"风险分布"_s, this);
    card->setHint(u"点击图中的等级，或在表中双击、按回车，可查看这些流水。"_s);
    m_riskBar = new ShareBar(u"风险分布图"_s, card);
    m_risks = new FigureTableView(u"风险分布"_s, card);
    m_risks->setObjectName(u"riskTable"_s);
    addFigures(card, m_riskBar, m_risks, &ReportPage::openRisk);
    return card;
}

Card* ReportPage::buildTrend()
{
    m_trendCard = new Card(u"月度趋势"_s, this);
    m_trend = new BarChart(u"月度趋势图"_s, m_trendCard);
    m_trendCard->body()->addWidget(m_trend);
    connect(m_trend, &BarChart::activated, this, [this](int item) {
        const DateRange& days = m_steps.at(item).range;
        emit navigateRequested(
            PageId::Ledger, { { u"dateFrom"_s, days.from }, { u"dateTo"_s, days.to } });
    });
    return m_trendCard;
}

QWidget* ReportPage::headerActions()
{
    auto* actions = new QWidget;
    auto* line = new QHBoxLayout(actions);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(8);
    const auto addButton = [&](const QString& text, const QString& objectName, auto slot) {
        QPushButton* button = makeButton(text, ButtonRole::Default, actions);
        button->setObjectName(objectName);
        line->addWidget(button);
        connect(button, &QPushButton::clicked, this, slot);
    };
    addButton(u"⬇ 导出CSV"_s, u"exportReport"_s, &ReportPage::onExport);
    addButton(u"打印"_s, u"printReport"_s, &ReportPage::onPrint);
    return actions;
}

void ReportPage::refresh()
{
    const QString problem = m_range->problem();
    m_range->refresh();
    m_problem->setText(problem);
    m_problem->setVisible(!problem.isEmpty());
    m_report.reset();
    if (problem.isEmpty())
        m_report = Report::read(m_range->range(), QDate::currentDate());
    m_unreadable->setVisible(problem.isEmpty() && !m_report);
    m_content->setVisible(m_report.has_value());
    if (m_report)
        showReport();
}

void ReportPage::showReport()
{
    showTotals();
    m_categoryBars->setEmptyText(u"这段时间没有流水"_s);
    m_categoryBars->setItems(ReportCharts::categoryBars(m_report->categories));
    m_categories->setTable(ReportTexts::categoryTable(m_report->categories));
    m_accounts->setTable(ReportTexts::accountTable(m_report->totals.totals));
    m_riskBar->setEmptyText(u"这段时间没有流水"_s);
    m_riskBar->setItems(ReportCharts::riskParts(m_report->levels));
    m_risks->setTable(ReportTexts::riskTable(m_report->levels));

    m_steps = Trend::stepsOf(m_report->months, m_report->range);
    if (!Trend::hasMovement(m_steps))
        m_steps.clear();
    const QString how = u"点击某个柱子，或用左右方向键选中后按回车，可查看当期流水。"_s;
    m_trendCard->setHint(m_report->months.size() > Trend::mostMonths
            ? u"时间范围超过 %1 个月，按年显示。%2"_s.arg(QString::number(Trend::mostMonths), how)
            : how);
    m_trend->setEmptyText(u"这段时间没有收支"_s);
    m_trend->setItems(barsOf(m_steps));
}

void ReportPage::showTotals()
{
    const auto show = [this](StatCard* card, const QString& value, auto figure) {
        card->setValue(value);
        card->setFoot(ReportTexts::changeLine(m_report->totals, figure));
    };
    const Totals& all = m_report->totals.totals.all;
    show(m_income, Money::format(all.incomeFen) + u" 元"_s,
        [](const Totals& totals) { return totals.incomeFen; });
    show(m_expense, Money::format(all.expenseFen) + u" 元"_s,
        [](const Totals& totals) { return totals.expenseFen; });
    show(m_net, Money::format(all.netFen()) + u" 元"_s,
        [](const Totals& totals) { return totals.netFen(); });
    show(m_count, u"%1 笔"_s.arg(all.count), [](const Totals& totals) { return totals.count; });
    const QString compared = ReportTexts::comparedDays(*m_report);
    m_compared->setText(compared);
    m_compared->setVisible(!compared.isEmpty());
}

void ReportPage::openCategory(int row)
{
    NavParams params;
    // The row below the categories is their total.
    if (row < m_report->categories.size())
        params.insert(u"category"_s, codeOf(m_report->categories.at(row).category));
    openLedger(params);
}

void ReportPage::openRisk(int row)
{
    openLedger({ { u"risk"_s, codeOf(static_cast<RiskLevel>(row)) } });
}

void ReportPage::openLedger(NavParams params)
{
    if (m_report->range.from.isValid())
        params.insert(u"dateFrom"_s, m_report->range.from);
    if (m_report->range.to.isValid())
        params.insert(u"dateTo"_s, m_report->range.to);
    // The total of all days: without parameters the ledger would keep its earlier filters.
    if (params.isEmpty())
        params.insert(u"all"_s, true);
    emit navigateRequested(PageId::Ledger, params);
}

bool ReportPage::hasReport(const QString& title, const QString& nothing)
{
    if (const QString problem = m_range->problem(); !problem.isEmpty())
        MessageBox::warn(this, title, problem);
    else if (!m_report)
        MessageBox::warn(this, title, m_unreadable->text());
    else if (m_report->isEmpty())
        MessageBox::info(this, title, nothing);
    else
        return true;
    return false;
}

void ReportPage::onExport()
{
    const QString title = u"导出统计报表 CSV"_s;
    if (!hasReport(title, u"当前时间范围内没有可导出的数据"_s))
        return;
    const Report report = *m_report;
    const CsvExport::Range range { report.range.from, report.range.to };
    const QString path
        = SaveFileDialog::ask(this, title, u"CSV 文件 (*.csv)"_s, CsvExport::reportFileName(range));
    if (path.isEmpty())
        return;
    const CsvExport::Result result
        = CsvExport::exportReport(range, report.categories, report.levels, path);
    if (!result.ok) {
        MessageBox::warn(this, u"导出失败"_s, result.message);
        return;
    }
    if (MessageBox::ask(this, u"导出完成"_s, u"统计报表已导出，是否打开所在文件夹？"_s,
            u"打开文件夹"_s, u"暂不打开"_s))
        DesktopFiles::showInFolder(this, path);
}

void ReportPage::onPrint()
{
    const QString title = u"打印统计报表"_s;
    if (hasReport(title, u"当前时间范围内没有可打印的数据"_s))
        DocumentPdf::printHtml(
            ReportTexts::html(*m_report, ProfileDao().load().companyName), this, title);
}
