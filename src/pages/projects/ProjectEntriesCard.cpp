#include "pages/projects/ProjectEntriesCard.h"

#include "db/TransactionDao.h"
#include "dialogs/transaction/TransactionDialog.h"
#include "pages/projects/DetailTable.h"
#include "pages/projects/ProjectEntriesModel.h"
#include "services/projects/ProjectTexts.h"
#include "widgets/Card.h"
#include "widgets/LinkCellDelegate.h"
#include "widgets/RiskCellDelegate.h"
#include "widgets/RowCommands.h"
#include "widgets/TextRole.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRows = 10;

// For 13 px text.
const QList<ColumnWidths::Width> widths { { 92, 0 }, { 92, 2 }, { 56, 0 }, { 112, 0 }, { 112, 1 },
    { 104, 0 }, { 64, 0 } };

} // namespace

ProjectEntriesCard::ProjectEntriesCard(QWidget* parent)
    : QWidget(parent)
    , m_card(new Card(u"关联流水（0）"_s, this))
    , m_model(new ProjectEntriesModel(this))
    , m_totals(new QLabel(m_card))
{
    setObjectName(u"ProjectEntriesCard"_s);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_card);
    QPushButton* view = makeButton(u"在台账中查看"_s, ButtonRole::Default, m_card);
    view->setObjectName(u"viewInLedger"_s);
    m_card->addHeadWidget(view);
    connect(view, &QPushButton::clicked, this, &ProjectEntriesCard::viewInLedgerRequested);

    buildTable();
    m_card->body()->addWidget(m_table);
    m_totals->setObjectName(u"entryTotals"_s);
    m_totals->setTextFormat(Qt::PlainText);
    m_totals->setWordWrap(true);
    m_totals->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTextRole(m_totals, TextRole::Hint);
    m_card->body()->addWidget(m_totals);
}

void ProjectEntriesCard::buildTable()
{
    m_table = new DetailTable(u"关联流水"_s, m_model, widths, mostRows, m_card);
    m_table->setObjectName(u"entries"_s);
    m_table->setItemDelegateForColumn(ProjectEntriesModel::Risk, new RiskCellDelegate(m_table));
    auto* links = new LinkCellDelegate(m_table);
    m_table->setItemDelegateForColumn(ProjectEntriesModel::Actions, links);
    const auto edit
        = [this](const QModelIndex& index) { onEdit(index.data(Qt::UserRole).toLongLong()); };
    connect(links, &LinkCellDelegate::triggered, this, edit);
    connect(m_table, &QTableView::doubleClicked, this, [edit](const QModelIndex& index) {
        if (index.column() != ProjectEntriesModel::Actions)
            edit(index);
    });
    auto* commands = new RowCommands(m_table);
    commands->add(u"编辑"_s, { Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2 }, edit);
}

QString ProjectEntriesCard::showProject(qint64 projectId)
{
    TransactionDao entries;
    const QList<Transaction> found = entries.search({ .projectId = projectId });
    const ProjectTotals totals = entries.projectTotals(projectId);
    m_table->keepingCurrent([&] { m_model->setEntries(found); });
    m_card->setTitle(u"关联流水（%1）"_s.arg(found.size()));
    const bool isRead = entries.lastError().isEmpty();
    // Zeros would be taken for what the project earned.
    m_totals->setText(isRead ? ProjectTexts::totals(totals) : u"合计读取失败"_s);
    return isRead ? QString() : u"关联流水读取失败：%1"_s.arg(entries.lastError());
}

void ProjectEntriesCard::onEdit(qint64 entryId)
{
    TransactionDialog(entryId, this).exec();
    // One that cannot be opened any more should not stay in the list either.
    emit changed();
}
