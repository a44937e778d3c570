#include "pages/ledger/LedgerPage.h"

#include "db/LedgerFiguresDao.h"
#include "db/ProjectDao.h"
#include "db/TransactionDao.h"
#include "dialogs/RiskNotice.h"
#include "dialogs/transaction/RiskReviewDialog.h"
#include "dialogs/transaction/TransactionDialog.h"
#include "pages/ledger/LedgerFilterCard.h"
#include "pages/ledger/LedgerModel.h"
#include "pages/ledger/LedgerTable.h"
#include "services/csv/CsvExport.h"
#include "services/DesktopFiles.h"
#include "services/entries/EntryService.h"
#include "services/figures/LedgerTexts.h"
#include "services/risk/RiskService.h"
#include "widgets/Banner.h"
#include "widgets/BusyNotice.h"
#include "widgets/ButtonRole.h"
#include "widgets/EmptyState.h"
#include "widgets/MessageBox.h"
#include "widgets/SaveFileDialog.h"
#include "widgets/TextRole.h"
#include "widgets/Toast.h"

#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

Banner* hiddenBanner(BannerKind kind, QWidget* parent)
{
    auto* banner = new Banner(kind, parent);
    banner->hide();
    return banner;
}

QString projectChip(qint64 projectId)
{
    const std::optional<Project> project = ProjectDao().findById(projectId);
    return u"项目：%1"_s.arg(project ? project->name : u"已删除的项目"_s);
}

} // namespace

LedgerPage::LedgerPage(QWidget* parent)
    : IPage(u"公私资金台账"_s, parent)
    , m_model(new LedgerModel(this))
    , m_filters(new LedgerFilterCard(this))
    , m_problem(hiddenBanner(BannerKind::Warning, this))
    , m_unreadable(hiddenBanner(BannerKind::Danger, this))
    , m_chips(new FilterChips(this))
{
    setObjectName(u"LedgerPage"_s);
    m_problem->setObjectName(u"filterProblem"_s);
    m_unreadable->setObjectName(u"unreadable"_s);
    m_unreadable->setAction(u"重试"_s);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 16);
    column->setSpacing(12);
    column->addWidget(m_filters);
    column->addWidget(m_problem);
    column->addWidget(m_unreadable);
    column->addWidget(m_chips);
    column->addWidget(buildBody(), 1);
    column->addWidget(buildFoot());

    connect(m_filters, &LedgerFilterCard::searchRequested, this, &LedgerPage::runSearch);
    connect(m_filters, &LedgerFilterCard::resetRequested, this, &LedgerPage::onReset);
    connect(m_chips, &FilterChips::removed, this, &LedgerPage::onChipRemoved);
    connect(m_unreadable, &Banner::actionTriggered, this, &LedgerPage::refresh);
    connectTable();
    addShortcuts();
}

QWidget* LedgerPage::buildBody()
{
    m_table = new LedgerTable(m_model, this);
    m_empty = new EmptyState(u"ledger"_s, u"暂无资金流水"_s,
        u"登记第一笔流水后将在此展示，系统会自动进行公私混同风险检测。"_s, this);
    m_empty->setAction(u"＋ 登记第一笔流水"_s);
    connect(m_empty, &EmptyState::actionTriggered, this, &LedgerPage::onAdd);
    connect(m_empty, &EmptyState::noteTriggered, this, &LedgerPage::onReset);
    m_body = new QStackedWidget(this);
    m_body->addWidget(m_table);
    m_body->addWidget(m_empty);
    return m_body;
}

QWidget* LedgerPage::buildFoot()
{
    auto* foot = new QWidget(this);
    auto* line = new QHBoxLayout(foot);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(8);
    m_totals = new QLabel(foot);
    m_totals->setObjectName(u"totals"_s);
    m_totals->setTextFormat(Qt::PlainText);
    m_totals->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_selection = new QLabel(foot);
    m_selection->setObjectName(u"selection"_s);
    setTextRole(m_selection, TextRole::Hint);
    m_decide = makeButton(u"为所选生成往来决定书"_s, ButtonRole::Link, foot);
    m_decide->setObjectName(u"decideSelected"_s);
    line->addWidget(m_totals);
    line->addStretch();
    line->addWidget(m_selection);
    line->addWidget(m_decide);
    foot->setFixedHeight(m_decide->sizeHint().height());
    return foot;
}

void LedgerPage::connectTable()
{
    connect(m_table, &LedgerTable::editRequested, this, &LedgerPage::onEdit);
    connect(m_table, &LedgerTable::copyAsNewRequested, this, &LedgerPage::onCopyAsNew);
    connect(m_table, &LedgerTable::reviewRequested, this, &LedgerPage::onReview);
    connect(m_table, &LedgerTable::deleteRequested, this, &LedgerPage::onDelete);
    connect(m_table, &LedgerTable::documentRequested, this, &LedgerPage::onFundDecisions);
    connect(m_decide, &QPushButton::clicked, m_table, &LedgerTable::requestDocument);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &LedgerPage::showSelection);
}

void LedgerPage::addShortcuts()
{
    // For the whole window: the focus may be in the navigation. Hidden pages do not answer.
    const auto add = [this](const QKeySequence& keys, auto slot) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, slot);
    };
    add(QKeySequence::New, &LedgerPage::onAdd);
    add(QKeySequence::Find, [this] { m_filters->focusKeyword(); });
    add(QKeySequence(Qt::Key_F5), &LedgerPage::refresh);
    add(QKeySequence(Qt::CTRL | Qt::Key_E), &LedgerPage::onExport);
}

QWidget* LedgerPage::headerActions()
{
    auto* actions = new QWidget;
    auto* line = new QHBoxLayout(actions);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(8);
    QPushButton* add = makeButton(u"＋ 新增流水"_s, ButtonRole::Primary, actions);
    add->setObjectName(u"addEntry"_s);
    QPushButton* exportRows = makeButton(u"⬇ 导出CSV"_s, ButtonRole::Default, actions);
    exportRows->setObjectName(u"exportEntries"_s);
    exportRows->setToolTip(u"导出当前筛选为 CSV"_s);
    line->addWidget(add);
    line->addWidget(exportRows);
    connect(add, &QPushButton::clicked, this, &LedgerPage::onAdd);
    connect(exportRows, &QPushButton::clicked, this, &LedgerPage::onExport);
    return actions;
}

void LedgerPage::applyNavParams(const NavParams& params)
{
    const LedgerScope asked = LedgerScope::of(params);
    // What an earlier request put into the fields goes with it; a request for a single entry
    // leaves alone what the user typed.
    if (asked.all || asked.restricts() || m_scope.restricts())
        m_filters->clear();
    m_scope = asked;
    if (asked.risk)
        m_filters->setRisk(asked.risk);
    if (asked.category)
        m_filters->setCategory(asked.category);
    if (asked.range != DateRange())
        m_filters->setRange(asked.range);
    m_fromTop = true;
}

void LedgerPage::runSearch()
{
    const QString problem = m_filters->problem();
    m_problem->setText(problem);
    m_problem->setVisible(!problem.isEmpty());
    if (!problem.isEmpty())
        return;
    m_fromTop = true;
    refresh();
}

void LedgerPage::refresh()
{
    if (m_filters->problem().isEmpty()) {
        m_applied = m_filters->filter();
        m_applied.projectId = m_scope.projectId;
        m_problem->hide();
    }
    load();
    showWanted();
}

void LedgerPage::load()
{
    TransactionDao transactions;
    QList<Transaction> found = transactions.search(m_applied);
    const QString error = transactions.lastError();
    m_unreadable->setText(u"流水无法读取：%1"_s.arg(error));
    m_unreadable->setVisible(!error.isEmpty());

    const auto position = m_fromTop ? LedgerTable::Position() : m_table->position();
    m_model->setEntries(m_scope.chosenOf(std::move(found)));
    m_table->restore(position);
    m_fromTop = false;
    showFound();
}

void LedgerPage::showFound()
{
    const bool readable = m_unreadable->isHidden();
    // An empty ledger and one that cannot be read must not look alike.
    m_body->setVisible(readable);
    m_totals->setVisible(readable);
    m_totals->setText(LedgerTexts::totalsLine(m_model->entries()));
    if (readable && m_model->entries().isEmpty())
        showEmpty();
    else
        m_body->setCurrentWidget(m_table);
    showChips();
    showSelection();
}

void LedgerPage::showEmpty()
{
    const qint64 hidden = isRestricted() ? LedgerFiguresDao().entryCount({}, {}) : 0;
    const bool isFiltered = hidden > 0;
    m_empty->setNote(isFiltered ? u"已登记的 %1 笔流水都不符合当前筛选条件。"_s.arg(hidden) : u""_s,
        isFiltered ? u"清除筛选"_s : u""_s);
    m_body->setCurrentWidget(m_empty);
}

bool LedgerPage::isRestricted() const
{
    return m_applied.dateFrom.isValid() || m_applied.dateTo.isValid() || m_applied.owner
        || m_applied.category || m_applied.risk || !m_applied.keyword.isEmpty()
        || m_scope.projectId > 0 || !m_scope.entryIds.isEmpty();
}

void LedgerPage::showWanted()
{
    const qint64 wanted = std::exchange(m_scope.selectedId, 0);
    if (wanted <= 0 || m_table->selectEntry(wanted))
        return;
    m_scope = {};
    m_filters->clear();
    refresh();
    if (!m_table->selectEntry(wanted) && m_unreadable->isHidden())
        Toast::show(window(), u"该笔流水已不存在"_s, BannerKind::Warning);
}

void LedgerPage::showSelection()
{
    const qsizetype count = m_table->selectionModel()->selectedRows().size();
    m_selection->setText(u"已选 %1 笔"_s.arg(count));
    m_selection->setVisible(count > 1);
    m_decide->setVisible(count > 1);
}

void LedgerPage::showChips()
{
    m_chips->setChips(chips());
}

QList<FilterChips::Chip> LedgerPage::chips() const
{
    QList<FilterChips::Chip> chips;
    if (m_scope.projectId > 0)
        chips += { u"project"_s, projectChip(m_scope.projectId) };
    if (!m_scope.entryIds.isEmpty())
        chips += { u"entries"_s, u"指定流水：%1 笔"_s.arg(m_scope.entryIds.size()) };
    // These two are in the fields as well, and the chip goes when the user changes the field.
    const DateRange applied { .from = m_applied.dateFrom, .to = m_applied.dateTo };
    if (m_scope.range != DateRange() && applied == m_scope.range)
        chips += { u"range"_s, u"日期：%1"_s.arg(LedgerTexts::rangeText(applied)) };
    if (m_scope.category && m_applied.category == m_scope.category)
        chips += { u"category"_s, u"分类：%1"_s.arg(labelOf(*m_scope.category)) };
    return chips;
}

void LedgerPage::onChipRemoved(const QString& key)
{
    if (key == u"project")
        m_scope.projectId = 0;
    else if (key == u"entries")
        m_scope.entryIds.clear();
    else if (key == u"range")
        m_filters->setRange(m_scope.range = {});
    else if (key == u"category")
        m_filters->setCategory(m_scope.category = std::nullopt);
    runSearch();
}

void LedgerPage::onReset()
{
    m_scope = {};
    m_filters->clear();
    runSearch();
}

void LedgerPage::onAdd()
{
    TransactionDialog dialog(0, this);
    if (dialog.exec() == QDialog::Accepted)
        showChanged(dialog.entryId(), u"流水已保存，风险已重算"_s);
}

void LedgerPage::onCopyAsNew(qint64 id)
{
    TransactionDialog dialog(m_model->entryAt(m_model->rowOf(id)), this);
    if (dialog.exec() == QDialog::Accepted)
        showChanged(dialog.entryId(), u"流水已保存，风险已重算"_s);
}

void LedgerPage::onEdit(qint64 id)
{
    TransactionDialog dialog(id, this);
    if (dialog.exec() == QDialog::Accepted)
        showChanged(id, u"修改已保存，风险已重算"_s);
}

void LedgerPage::onReview(qint64 id)
{
    RiskReviewDialog dialog(id, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    showStored(id);
    Toast::show(window(), u"人工复核已保存"_s);
}

void LedgerPage::showStored(qint64 id)
{
    refresh();
    if (!m_table->selectEntry(id))
        Toast::show(window(), u"该笔流水不符合当前筛选条件，未在列表中显示"_s, BannerKind::Info);
}

void LedgerPage::showChanged(qint64 id, const QString& done)
{
    showStored(id);
    RiskNotice::tell(this, done);
}

void LedgerPage::onDelete(qint64 id)
{
    const int row = m_model->rowOf(id);
    if (row < 0
        || !MessageBox::ask(this, u"确认删除"_s, LedgerTexts::deleteQuestion(m_model->entryAt(row)),
            u"确认删除"_s, u"取消"_s, ButtonRole::Danger))
        return;
    if (const QString problem = EntryService::remove(id); !problem.isEmpty()) {
        MessageBox::warn(this, u"删除失败"_s, problem);
        return;
    }
    {
        std::optional<BusyNotice> notice;
        if (RiskService::takesNoticeablyLong())
            notice.emplace(this, u"流水已删除，正在重算风险…"_s);
        RiskService().reevaluateAll();
    }
    refresh();
    RiskNotice::tell(this, u"流水已删除，相关风险已重算"_s);
}

void LedgerPage::onFundDecision(qint64 id)
{
    onFundDecisions({ id });
}

void LedgerPage::onFundDecisions(const QList<qint64>& ids)
{
    QVariantList list;
    for (const qint64 id : ids)
        list += id;
    emit navigateRequested(PageId::Documents, { { u"fund"_s, true }, { u"txIds"_s, list } });
}

void LedgerPage::onExport()
{
    const QString title = u"导出资金流水 CSV"_s;
    if (!m_unreadable->isHidden()) {
        MessageBox::warn(this, title, m_unreadable->text());
        return;
    }
    const QList<Transaction> rows = m_model->entries();
    if (rows.isEmpty()) {
        MessageBox::info(this, title, u"当前筛选条件下没有可导出的流水"_s);
        return;
    }
    const QString path = SaveFileDialog::ask(
        this, title, u"CSV 文件 (*.csv)"_s, CsvExport::ledgerFileName(m_applied));
    if (path.isEmpty())
        return;
    // Entries that another page chose are not found by a search.
    const CsvExport::Result result = m_scope.entryIds.isEmpty()
        ? CsvExport::exportSearch(m_applied, path)
        : CsvExport::exportLedger(rows, path);
    if (!result.ok) {
        MessageBox::warn(this, u"导出失败"_s, result.message);
        return;
    }
    if (MessageBox::ask(this, u"导出完成"_s,
            u"已导出 %1 笔流水，是否打开所在文件夹？"_s.arg(result.entries), u"打开文件夹"_s,
            u"暂不打开"_s))
        DesktopFiles::showInFolder(this, path);
}
