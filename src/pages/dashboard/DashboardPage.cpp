#include "pages/dashboard/DashboardPage.h"

#include "core/Money.h"
#include "dialogs/NoticeKind.h"
#include "pages/dashboard/ListCard.h"
#include "pages/TrendBars.h"
#include "services/SelfCheckState.h"
#include "widgets/Banner.h"
#include "widgets/Card.h"
#include "widgets/charts/BarChart.h"
#include "widgets/ScrollColumn.h"
#include "widgets/StatCard.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QShortcut>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using DashboardRows::Destination;

namespace {

constexpr int cardColumns = 4;
const QString unknown = u"—"_s;
const QString unreadable = u"数据没有读出来"_s;

QString yuan(qint64 fen)
{
    return Money::format(fen) + u" 元"_s;
}

Destination ledgerOfRisk(RiskLevel level)
{
    return { PageId::Ledger, { { u"risk"_s, codeOf(level) } } };
}

void showUnknown(StatCard* card)
{
    card->setValue(unknown);
    card->setFoot(unreadable);
}

void showCount(StatCard* card, qint64 count, const QString& unit, const QString& foot)
{
    card->setValue(QString::number(count) + unit);
    card->setFoot(foot);
}

QString accountsText(const LedgerStatistics::AccountTotals& totals,
    qint64 (*figure)(const LedgerStatistics::Totals&))
{
    return u"对公 %1｜私户 %2"_s.arg(
        Money::format(figure(totals.company)), Money::format(figure(totals.privateAccount)));
}

} // namespace

DashboardPage::DashboardPage(QWidget* parent)
    : IPage(u"首页看板"_s, parent)
    , m_steps(new ListCard(u"开始使用"_s, this))
    , m_todo(new ListCard(u"待办事项"_s, this))
    , m_recent(new ListCard(u"最近流水"_s, this))
    , m_projects(new ListCard(u"进行中的项目"_s, this))
{
    setObjectName(u"DashboardPage"_s);
    auto* scroll = new ScrollColumn(this);
    QVBoxLayout* column = scroll->column();
    m_banners = new QVBoxLayout;
    m_banners->setSpacing(8);
    column->addLayout(m_banners);
    m_steps->setObjectName(u"steps"_s);
    column->addWidget(m_steps);
    m_body = buildFigures();
    column->addWidget(m_body);
    column->addStretch();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);

    connectLists();
    connect(new QShortcut(QKeySequence(Qt::Key_F5), this), &QShortcut::activated, this,
        &DashboardPage::refresh);
}

QWidget* DashboardPage::buildFigures()
{
    auto* figures = new QWidget(this);
    auto* column = new QVBoxLayout(figures);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(16);
    column->addLayout(buildCards());
    m_todo->setObjectName(u"todo"_s);
    column->addWidget(m_todo);
    column->addWidget(buildChart());

    m_recent->setObjectName(u"recent"_s);
    m_recent->addLink(u"查看全部"_s, u"查看全部流水"_s);
    m_projects->setObjectName(u"projects"_s);
    m_projects->addLink(u"查看全部"_s, u"查看全部项目"_s);
    auto* lists = new QHBoxLayout;
    lists->setSpacing(16);
    lists->addWidget(m_recent, 3);
    lists->addWidget(m_projects, 2);
    column->addLayout(lists);
    return figures;
}

QLayout* DashboardPage::buildCards()
{
    makeCards();
    auto* grid = new QGridLayout;
    grid->setSpacing(16);
    int place = 0;
    for (StatCard* card : { m_cards.high, m_cards.medium, m_cards.low, m_cards.unlinked,
             m_cards.income, m_cards.expense, m_cards.net, m_cards.ownerBalance }) {
        grid->addWidget(card, place / cardColumns, place % cardColumns);
        grid->setColumnStretch(place % cardColumns, 1);
        ++place;
    }
    return grid;
}

void DashboardPage::makeCards()
{
    const Destination unlinked { PageId::Vouchers, { { u"linked"_s, u"none"_s } } };
    m_cards = { .high = addCard(labelOf(RiskLevel::High) + u"流水"_s, Token::ChartRiskHigh,
                    ledgerOfRisk(RiskLevel::High)),
        .medium = addCard(labelOf(RiskLevel::Medium) + u"流水"_s, Token::ChartRiskMedium,
            ledgerOfRisk(RiskLevel::Medium)),
        .low = addCard(
            labelOf(RiskLevel::Low) + u"流水"_s, Token::ChartRiskLow, ledgerOfRisk(RiskLevel::Low)),
        .unlinked = addCard(u"未关联凭证"_s, Token::WarningText, unlinked),
        .income = new StatCard(u"本月收入"_s, this),
        .expense = new StatCard(u"本月支出"_s, this),
        .net = new StatCard(u"本月净额"_s, this),
        .ownerBalance = new StatCard(u"股东往来净额（本年）"_s, this) };
    m_cards.income->setEdge(Token::ChartIn);
    m_cards.expense->setEdge(Token::ChartOut);
    m_cards.net->setEdge(Token::ChartNet);
    for (StatCard* card : { m_cards.income, m_cards.expense, m_cards.net }) {
        card->setNavigable(true);
        connect(card, &StatCard::clicked, this, &DashboardPage::goToMonth);
    }
    connect(m_cards.ownerBalance, &StatCard::clicked, this, [this] {
        QVariantList ids;
        for (const qint64 id : DashboardFigures::ownerBalanceEntries(
                 m_figures.todo.ownerFlows, rangeOf(Period::ThisYear, m_figures.today)))
            ids += id;
        goTo({ PageId::Ledger, { { u"txIds"_s, ids } } });
    });
}

StatCard* DashboardPage::addCard(const QString& title, Token edge, const Destination& to)
{
    auto* card = new StatCard(title, this);
    card->setEdge(edge);
    card->setNavigable(true);
    connect(card, &StatCard::clicked, this, [this, to] { goTo(to); });
    return card;
}

QWidget* DashboardPage::buildChart()
{
    auto* card = new Card(u"近 12 个月收支"_s, this);
    card->setHint(u"点击某个月，或用左右方向键选中后按回车，可查看当月流水。"_s);
    m_chart = new BarChart(u"近 12 个月收支"_s, card);
    card->body()->addWidget(m_chart);
    connect(m_chart, &BarChart::activated, this,
        [this](int item) { goTo(DashboardRows::ledgerOf(m_months.at(item).range)); });
    return card;
}

void DashboardPage::connectLists()
{
    connect(m_steps, &ListCard::rowTriggered, this,
        [this](int step) { goTo(DashboardRows::destinationOfStep(step)); });
    connect(m_todo, &ListCard::rowTriggered, this,
        [this](int item) { goTo(DashboardRows::destinationOf(m_items.at(item))); });
    connect(m_recent, &ListCard::rowTriggered, this, [this](int row) {
        goTo({ PageId::Ledger, { { u"txId"_s, m_figures.recent->at(row).id } } });
    });
    connect(m_recent, &ListCard::linkTriggered, this, [this] {
        goTo({ PageId::Ledger, { { u"all"_s, true } } });
    });
    connect(m_projects, &ListCard::rowTriggered, this, [this](int row) {
        goTo({ PageId::Projects, { { u"projectId"_s, m_figures.projects->at(row).id } } });
    });
    connect(m_projects, &ListCard::linkTriggered, this, [this] { goTo({ PageId::Projects, {} }); });
}

void DashboardPage::refresh()
{
    m_figures = DashboardFigures::read(QDate::currentDate());
    showBanners();
    showSteps();
    showCounts();
    showMonth();
    showOwnerBalance();
    showTodo();
    showChart();
    showRecent();
    showProjects();
}

void DashboardPage::showBanners()
{
    while (QLayoutItem* item = m_banners->takeAt(0)) {
        // Later, because its button may be the one that was just pressed.
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
    DashboardBanners::Facts facts { .today = m_figures.today,
        .selfCheckFailed = SelfCheckState::hasFailed(),
        .isIncomplete = m_figures.isIncomplete() };
    // A profile that cannot be read is told as such, not as one that was never filled in.
    if (m_figures.profile)
        facts.profile = *m_figures.profile;
    for (const DashboardBanners::Notice& notice : DashboardBanners::noticesOf(facts)) {
        if (!m_figures.profile && notice.target != DashboardBanners::Target::SelfCheck)
            continue;
        auto* banner = new Banner(bannerKindOf(notice.level), this);
        banner->setText(notice.text);
        banner->setAction(DashboardRows::actionOf(notice.target));
        m_banners->addWidget(banner);
        banner->show();
        connect(banner, &Banner::actionTriggered, this,
            [this, target = notice.target] { goTo(DashboardRows::destinationOf(target)); });
    }
}

void DashboardPage::showSteps()
{
    const auto steps = DashboardFigures::stepsOf(m_figures);
    m_steps->setVisible(steps && !steps->areDone());
    // What cannot be counted is not taken for empty.
    m_body->setVisible(!steps || steps->entry);
    if (steps)
        m_steps->setRows(DashboardRows::stepRows(*steps));
}

void DashboardPage::showCounts()
{
    if (!m_figures.counts) {
        for (StatCard* card : { m_cards.high, m_cards.medium, m_cards.low, m_cards.unlinked })
            showUnknown(card);
        return;
    }
    const auto& [high, medium, low, unlinked] = *m_figures.counts;
    showCount(m_cards.high, high, u" 笔"_s, u"疑似公私混同，请逐笔处理"_s);
    showCount(m_cards.medium, medium, u" 笔"_s, u"往来频繁，缺少决定书"_s);
    showCount(m_cards.low, low, u" 笔"_s, u"大额，缺少说明或凭证"_s);
    showCount(m_cards.unlinked, unlinked, u" 张"_s, u"看不出证明哪一笔款项"_s);
}

void DashboardPage::showMonth()
{
    using Totals = LedgerStatistics::Totals;
    const auto show = [this](StatCard* card, qint64 (*figure)(const Totals&)) {
        if (!m_figures.month)
            return showUnknown(card);
        card->setValue(yuan(figure(m_figures.month->all)));
        card->setFoot(accountsText(*m_figures.month, figure));
    };
    show(m_cards.income, [](const Totals& totals) { return totals.incomeFen; });
    show(m_cards.expense, [](const Totals& totals) { return totals.expenseFen; });
    show(m_cards.net, [](const Totals& totals) { return totals.netFen(); });
}

void DashboardPage::showOwnerBalance()
{
    StatCard* card = m_cards.ownerBalance;
    const bool hasEntries = !DashboardFigures::ownerBalanceEntries(
        m_figures.todo.ownerFlows, rangeOf(Period::ThisYear, m_figures.today))
                                 .isEmpty();
    card->setNavigable(m_figures.ownerBalanceFen && hasEntries);
    if (!m_figures.ownerBalanceFen)
        return showUnknown(card);
    const qint64 balanceFen = *m_figures.ownerBalanceFen;
    card->setEdge(balanceFen < 0 ? Token::WarningText : Token::Primary);
    card->setValue(yuan(balanceFen));
    card->setFoot(
        hasEntries ? DashboardFigures::ownerBalanceText(balanceFen) : u"本年没有股东转入或转付"_s);
}

void DashboardPage::showTodo()
{
    m_items = TodoList::itemsOf(m_figures.todo);
    QList<RowButton::Content> rows;
    for (const TodoList::Item& item : std::as_const(m_items))
        rows += DashboardRows::todoRow(item);
    m_todo->setRows(rows);
    if (m_figures.todo.isIncomplete)
        m_todo->addNotice(u"部分数据没有读出来，待办事项可能不全。"_s);
    else if (rows.isEmpty())
        m_todo->addNotice(u"没有待办事项。"_s);
}

void DashboardPage::showChart()
{
    m_months = m_figures.months ? Trend::stepsOf(*m_figures.months, {}) : QList<Trend::Step>();
    if (!Trend::hasMovement(m_months))
        m_months.clear();
    m_chart->setEmptyText(m_figures.months ? u"近 12 个月没有收支"_s : unreadable);
    m_chart->setItems(barsOf(m_months));
}

void DashboardPage::showRecent()
{
    QList<RowButton::Content> rows;
    if (m_figures.recent) {
        for (const Transaction& entry : *m_figures.recent)
            rows += DashboardRows::entryRow(entry);
    }
    m_recent->setRows(rows);
    if (!m_figures.recent)
        m_recent->addNotice(unreadable);
}

void DashboardPage::showProjects()
{
    QList<RowButton::Content> rows;
    if (m_figures.projects) {
        for (const Project& project : *m_figures.projects)
            rows += DashboardRows::projectRow(project);
    }
    m_projects->setRows(rows);
    if (!m_figures.projects)
        m_projects->addNotice(unreadable);
    else if (rows.isEmpty())
        m_projects->addNotice(u"没有进行中的项目。"_s);
}

void DashboardPage::goTo(const Destination& destination)
{
    emit navigateRequested(destination.page, destination.params);
}

void DashboardPage::goToMonth()
{
    goTo(DashboardRows::ledgerOf(rangeOf(Period::ThisMonth, m_figures.today)));
}
