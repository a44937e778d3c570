#include "pages/projects/ProjectPage.h"

#include "db/ProjectDao.h"
#include "dialogs/projects/ProjectDialog.h"
#include "pages/projects/ProjectDetail.h"
#include "pages/projects/ProjectListDelegate.h"
#include "pages/projects/ProjectListModel.h"
#include "services/projects/ProjectService.h"
#include "theme/Icons.h"
#include "widgets/ButtonRole.h"
#include "widgets/EmptyState.h"
#include "widgets/MessageBox.h"
#include "widgets/Toast.h"

#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int listWidth = 256;
constexpr int narrowestList = 200;

} // namespace

ProjectPage::ProjectPage(QWidget* parent)
    : IPage(u"项目合同管理"_s, parent)
{
    setObjectName(u"ProjectPage"_s);
    auto* splitter = new QSplitter(this);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(buildList());
    splitter->addWidget(buildDetail());
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({ listWidth, 1000 });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
}

QWidget* ProjectPage::buildList()
{
    auto* side = new QWidget(this);
    side->setMinimumWidth(narrowestList);
    auto* column = new QVBoxLayout(side);
    column->setContentsMargins(24, 20, 8, 24);
    column->setSpacing(12);
    m_search = new QLineEdit(side);
    m_search->setObjectName(u"projectSearch"_s);
    m_search->setPlaceholderText(u"搜索项目名/客户名"_s);
    m_search->setAccessibleName(u"搜索项目名/客户名"_s);
    m_search->setClearButtonEnabled(true);
    m_search->addAction(Icons::icon(u"search"), QLineEdit::LeadingPosition);
    connect(m_search, &QLineEdit::textChanged, this, &ProjectPage::onSearchChanged);
    QPushButton* add = makeButton(u"＋ 新增项目"_s, ButtonRole::Primary, side);
    add->setObjectName(u"addProject"_s);
    connect(add, &QPushButton::clicked, this, &ProjectPage::onAddProject);

    m_model = new ProjectListModel(this);
    m_list = new QListView(side);
    m_list->setObjectName(u"projects"_s);
    m_list->setAccessibleName(u"项目列表"_s);
    m_list->setModel(m_model);
    m_list->setItemDelegate(new ProjectListDelegate(m_list));
    m_list->setUniformItemSizes(true);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this,
        [this](const QModelIndex& current) { onCurrentProjectChanged(current.row()); });
    column->addWidget(m_search);
    column->addWidget(add);
    column->addWidget(m_list, 1);
    return side;
}

QWidget* ProjectPage::buildDetail()
{
    m_stack = new QStackedWidget(this);
    m_nothing = new EmptyState(u"projects"_s, u"请选择项目"_s,
        u"从左侧选择项目查看详情，或点击「新增项目」创建第一个项目。"_s, m_stack);
    m_detail = new ProjectDetail;
    m_detailScroll = new QScrollArea(m_stack);
    m_detailScroll->setWidgetResizable(true);
    m_detailScroll->setWidget(m_detail);
    m_stack->addWidget(m_nothing);
    m_stack->addWidget(m_detailScroll);

    connect(m_detail, &ProjectDetail::editRequested, this, &ProjectPage::onEditProject);
    connect(m_detail, &ProjectDetail::deleteRequested, this, &ProjectPage::onDeleteProject);
    connect(m_detail, &ProjectDetail::viewInLedgerRequested, this, &ProjectPage::onViewInLedger);
    connect(m_detail, &ProjectDetail::changed, this, &ProjectPage::refresh);
    connect(m_detail, &ProjectDetail::projectRequested, this, &ProjectPage::choose);
    connect(m_detail, &ProjectDetail::entryRequested, this, [this](qint64 entryId) {
        emit navigateRequested(PageId::Ledger, { { u"txId"_s, entryId } });
    });
    return m_stack;
}

void ProjectPage::refresh()
{
    reloadList();
    showCurrent();
}

void ProjectPage::applyNavParams(const NavParams& params)
{
    const qint64 id = params.value(u"projectId"_s).toLongLong();
    if (id <= 0 || !ProjectDao().findById(id))
        return;
    m_wanted = id;
    // A search would hide the project that was asked for.
    const QSignalBlocker silent(m_search);
    m_search->clear();
}

void ProjectPage::choose(qint64 projectId)
{
    applyNavParams({ { u"projectId"_s, projectId } });
    refresh();
}

void ProjectPage::reloadList()
{
    ProjectDao projects;
    const QList<Project> found = projects.list(m_search->text().trimmed());
    const QScopedValueRollback reloading(m_reloading, true);
    m_model->setProjects(found);
    const QModelIndex wanted = m_model->index(m_model->rowOf(m_wanted));
    m_list->setCurrentIndex(wanted);
    if (wanted.isValid())
        m_list->scrollTo(wanted);
    if (!projects.lastError().isEmpty())
        m_nothing->setTexts(u"项目读取失败"_s, projects.lastError());
    else
        m_nothing->setTexts(
            u"请选择项目"_s, u"从左侧选择项目查看详情，或点击「新增项目」创建第一个项目。"_s);
}

void ProjectPage::showCurrent()
{
    const qint64 before = m_shown ? m_shown->id : 0;
    const qint64 id = m_model->idAt(m_list->currentIndex().row());
    m_shown = id > 0 ? ProjectDao().findById(id) : std::nullopt;
    m_stack->setCurrentIndex(m_shown ? 1 : 0);
    if (!m_shown)
        return;
    m_detail->showProject(*m_shown);
    if (id != before)
        m_detailScroll->verticalScrollBar()->setValue(0);
}

void ProjectPage::onSearchChanged(const QString&)
{
    refresh();
}

void ProjectPage::onCurrentProjectChanged(int row)
{
    if (m_reloading)
        return;
    if (const qint64 id = m_model->idAt(row); id > 0)
        m_wanted = id;
    showCurrent();
}

void ProjectPage::onAddProject()
{
    ProjectDialog dialog(0, this);
    if (dialog.exec() == QDialog::Accepted)
        choose(dialog.projectId());
}

void ProjectPage::onEditProject()
{
    if (!m_shown)
        return;
    ProjectDialog(m_shown->id, this).exec();
    // One that cannot be opened any more should not stay in the list either.
    refresh();
}

void ProjectPage::onDeleteProject()
{
    if (!m_shown)
        return;
    const Project project = *m_shown;
    ProjectDao projects;
    const std::optional<qint64> entries = projects.countTransactions(project.id);
    if (!entries) {
        MessageBox::warn(this, u"删除失败"_s, projects.lastError());
        return;
    }
    if (*entries > 0) {
        MessageBox::warn(this, u"无法删除项目"_s,
            u"该项目下有 %1 笔流水，请先在台账中改派或删除后再删除项目。"_s.arg(*entries));
        return;
    }
    if (!MessageBox::ask(this, u"确认删除"_s,
            u"确认删除项目「%1」？\n项目下的合同登记将一并删除；已归档凭证仅解除关联，不会删除文件。"_s
                .arg(project.name),
            u"删除"_s, u"取消"_s, ButtonRole::Danger))
        return;
    const auto removed = ProjectService::removeProject(project.id);
    if (!removed.ok)
        MessageBox::warn(this, u"删除失败"_s, removed.message);
    refresh();
    if (removed.ok)
        Toast::show(window(), u"项目已删除"_s);
}

void ProjectPage::onViewInLedger()
{
    if (m_shown)
        emit navigateRequested(PageId::Ledger, { { u"projectId"_s, m_shown->id } });
}
