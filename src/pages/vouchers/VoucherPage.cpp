#include "pages/vouchers/VoucherPage.h"

#include "db/VoucherDao.h"
#include "dialogs/vouchers/VoucherAddDialog.h"
#include "pages/vouchers/VoucherActions.h"
#include "pages/vouchers/VoucherCardGrid.h"
#include "pages/vouchers/VoucherFilterBar.h"
#include "pages/vouchers/VoucherTable.h"
#include "services/vouchers/VoucherFiles.h"
#include "widgets/Banner.h"
#include "widgets/ButtonRole.h"
#include "widgets/EmptyState.h"
#include "widgets/FileIntake.h"
#include "widgets/TextRole.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

VoucherPage::VoucherPage(QWidget* parent)
    : IPage(u"凭证归档库"_s, parent)
    , m_filters(new VoucherFilterBar(this))
    , m_unreadable(new Banner(BannerKind::Danger, this))
    , m_count(new QLabel(this))
{
    setObjectName(u"VoucherPage"_s);
    m_unreadable->setObjectName(u"unreadable"_s);
    m_unreadable->setAction(u"重试"_s);
    m_unreadable->hide();
    m_count->setObjectName(u"voucherCount"_s);
    m_count->setTextFormat(Qt::PlainText);
    setTextRole(m_count, TextRole::Hint);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 16);
    column->setSpacing(12);
    column->addWidget(m_filters);
    column->addWidget(m_unreadable);
    column->addWidget(buildBody(), 1);
    column->addWidget(m_count);

    connect(m_filters, &VoucherFilterBar::searchRequested, this, &VoucherPage::onSearch);
    connect(m_filters, &VoucherFilterBar::resetRequested, this, &VoucherPage::onReset);
    connect(m_filters, &VoucherFilterBar::gridChosen, this, &VoucherPage::onShowGrid);
    connect(m_unreadable, &Banner::actionTriggered, this, &VoucherPage::refresh);
    connect(new FileIntake(this), &FileIntake::offered, this, &VoucherPage::addFiles);
    addShortcuts();
}

QWidget* VoucherPage::buildBody()
{
    m_body = new QStackedWidget(this);
    m_grid = new VoucherCardGrid(m_body);
    m_grid->setUnlinkHint(u"在编辑窗口中选择要移除的关联"_s);
    m_table = new VoucherTable(m_body);
    m_empty = new EmptyState(u"vouchers"_s, u"暂无凭证"_s,
        u"点击右上角「添加凭证」上传合同扫描件、银行回单、发票等文件。"_s, m_body);
    m_body->addWidget(m_grid);
    m_body->addWidget(m_table);
    m_body->addWidget(m_empty);
    connect(m_empty, &EmptyState::noteTriggered, this, &VoucherPage::onReset);
    connectView(m_grid);
    connectView(m_table);
    // Which of its links is meant only the user knows.
    connect(m_grid, &VoucherCardGrid::unlinkRequested, this, &VoucherPage::onEdit);
    connect(m_grid, &VoucherCardGrid::projectLinkClicked, this, [this](qint64 projectId) {
        emit navigateRequested(PageId::Projects, { { u"projectId"_s, projectId } });
    });
    connect(m_grid, &VoucherCardGrid::txLinkClicked, this, [this](qint64 entryId) {
        emit navigateRequested(PageId::Ledger, { { u"txId"_s, entryId } });
    });
    return m_body;
}

template <typename View> void VoucherPage::connectView(View* view)
{
    connect(view, &View::previewRequested, this,
        [this](qint64 id) { VoucherFiles::openVoucherFile(this, id); });
    connect(view, &View::folderRequested, this,
        [this](qint64 id) { VoucherFiles::showVoucherInFolder(this, id); });
    connect(view, &View::quickPreviewRequested, this, &VoucherPage::onQuickPreview);
    connect(view, &View::editRequested, this, &VoucherPage::onEdit);
    connect(view, &View::deleteRequested, this, &VoucherPage::onDelete);
}

void VoucherPage::addShortcuts()
{
    // For the whole window: the focus may be in the navigation. Hidden pages do not answer.
    const auto add = [this](const QKeySequence& keys, auto slot) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, slot);
    };
    add(QKeySequence::New, &VoucherPage::onAddVoucher);
    add(QKeySequence::Find, [this] { m_filters->focusKeyword(); });
    add(QKeySequence(Qt::Key_F5), &VoucherPage::refresh);
}

QWidget* VoucherPage::headerActions()
{
    QPushButton* add = makeButton(u"＋ 添加凭证"_s, ButtonRole::Primary, nullptr);
    add->setObjectName(u"addVoucher"_s);
    connect(add, &QPushButton::clicked, this, &VoucherPage::onAddVoucher);
    return add;
}

void VoucherPage::applyNavParams(const NavParams& params)
{
    const bool unlinked = params.value(u"linked"_s).toString() == u"none";
    const qint64 projectId = params.value(u"projectId"_s).toLongLong();
    if (!unlinked && projectId <= 0)
        return;
    // What was asked for must not be hidden by an earlier search.
    m_filters->clear();
    m_filters->reloadProjects();
    if (unlinked)
        m_filters->setLinkState(VoucherFilter::LinkState::Unlinked);
    if (projectId > 0)
        m_filters->setProjectId(projectId);
    m_fromTop = true;
}

void VoucherPage::onSearch()
{
    m_fromTop = true;
    refresh();
}

void VoucherPage::onReset()
{
    m_filters->clear();
    onSearch();
}

void VoucherPage::refresh()
{
    m_filters->reloadProjects();
    VoucherDao vouchers;
    const QList<Voucher> found = vouchers.search(m_filters->filter());
    const QString error = vouchers.lastError();
    m_unreadable->setText(u"凭证无法读取：%1"_s.arg(error));
    m_unreadable->setVisible(!error.isEmpty());
    // An empty archive and one that cannot be read must not look alike.
    m_body->setVisible(error.isEmpty());
    m_found = VoucherLinkSummaries::of(found);
    showFound();
    showCounts();
}

void VoucherPage::onShowGrid(bool grid)
{
    m_filters->setGrid(grid);
    showFound();
}

void VoucherPage::showFound()
{
    if (m_found.isEmpty()) {
        showEmpty();
        return;
    }
    const bool fromTop = std::exchange(m_fromTop, false);
    QAbstractScrollArea* shown = m_table;
    if (m_filters->isGrid()) {
        m_grid->setVouchers(m_found);
        shown = m_grid;
    } else {
        m_table->setVouchers(m_found);
    }
    m_body->setCurrentWidget(shown);
    if (fromTop)
        shown->verticalScrollBar()->setValue(0);
}

void VoucherPage::showEmpty()
{
    const int hidden = m_filters->restricts() ? VoucherDao().countAll() : 0;
    m_empty->setNote(
        hidden > 0 ? u"已归档的 %1 张凭证都不符合当前筛选条件。"_s.arg(hidden) : QString(),
        hidden > 0 ? u"清除筛选"_s : QString());
    m_body->setCurrentWidget(m_empty);
}

void VoucherPage::showCounts()
{
    VoucherDao vouchers;
    const int all = vouchers.countAll();
    QString error = vouchers.lastError();
    const int unlinked = vouchers.countUnlinked();
    error += vouchers.lastError();
    // A count that cannot be read is not zero.
    m_count->setText(error.isEmpty()
            ? u"共 %1 张（未关联 %2 张）"_s.arg(QString::number(all), QString::number(unlinked))
            : u"凭证数量读取失败"_s);
}

void VoucherPage::onAddVoucher()
{
    addFiles({});
}

void VoucherPage::addFiles(const QStringList& files)
{
    VoucherAddDialog dialog({ .projectId = 0, .transactionIds = {}, .files = files }, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    refresh();
    const QList<qint64> ids = dialog.importedIds();
    if (!ids.isEmpty() && !m_filters->isGrid())
        m_table->selectVoucher(ids.constFirst());
}

void VoucherPage::onQuickPreview(qint64 id)
{
    const bool grid = m_filters->isGrid();
    const qint64 last
        = VoucherActions::quickPreview(this, grid ? m_found : m_table->vouchers(), id);
    if (!grid)
        m_table->selectVoucher(last);
}

void VoucherPage::onEdit(qint64 id)
{
    const VoucherCardData* shown = find(id);
    if (shown && VoucherActions::edit(this, Voucher(shown->voucher)))
        refresh();
}

void VoucherPage::onDelete(qint64 id)
{
    const VoucherCardData* shown = find(id);
    if (shown && VoucherActions::remove(this, Voucher(shown->voucher)))
        refresh();
}

const VoucherCardData* VoucherPage::find(qint64 id) const
{
    const auto found = std::find_if(m_found.cbegin(), m_found.cend(),
        [id](const VoucherCardData& shown) { return shown.voucher.id == id; });
    return found != m_found.cend() ? &*found : nullptr;
}
