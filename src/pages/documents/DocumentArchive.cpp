#include "pages/documents/DocumentArchive.h"

#include "db/DocumentDao.h"
#include "db/LinkDao.h"
#include "pages/documents/DocumentActions.h"
#include "pages/documents/DocumentFilter.h"
#include "pages/documents/DocumentModel.h"
#include "services/documents/DocumentFiles.h"
#include "services/documents/DocumentRules.h"
#include "widgets/Banner.h"
#include "widgets/ButtonRole.h"
#include "widgets/Card.h"
#include "widgets/CodeChoice.h"
#include "widgets/EmptyState.h"
#include "widgets/FieldLabel.h"
#include "widgets/Toast.h"
#include "widgets/ViewStyle.h"

#include <QAction>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>
#include <functional>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// What the archive lists of a document besides its record. The links tell what is covered now,
// the stored selection what was covered when the document was drawn up.
ArchivedDocument archived(const DocumentRecord& record, LinkDao& links)
{
    ArchivedDocument document { .record = record, .hasFile = DocumentFiles::isThere(record) };
    if (record.docType != DocType::FundDecision)
        return document;
    for (const EntityLink& link : links.linksBySource(SourceType::Document, record.id)) {
        if (link.targetType == TargetType::Transaction)
            document.coveredIds += link.targetId;
    }
    const qsizetype once = DocumentRules::coveredIds(record).size();
    document.lostEntries = std::max<qsizetype>(0, once - document.coveredIds.size());
    return document;
}

} // namespace

DocumentArchive::DocumentArchive(QWidget* parent)
    : QWidget(parent)
    , m_notice(new Banner(BannerKind::Info, this))
    , m_model(new DocumentModel(this))
    , m_filter(new DocumentFilter(this))
{
    setObjectName(u"DocumentArchive"_s);
    m_filter->setSourceModel(m_model);
    m_notice->hide();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(12);
    column->addWidget(m_notice);
    column->addWidget(buildCard(), 1);
    onSelectionChanged();
}

Card* DocumentArchive::buildCard()
{
    auto* card = new Card({}, this);
    card->body()->addLayout(buildFilters());
    m_stack = new QStackedWidget(card);
    buildTable();
    m_empty = new EmptyState(u"documents"_s, {}, {}, m_stack);
    m_stack->addWidget(m_empty);
    card->body()->addWidget(m_stack, 1);
    card->body()->addLayout(buildCommands());
    connect(m_empty, &EmptyState::actionTriggered, this, &DocumentArchive::clearFilter);
    return card;
}

QHBoxLayout* DocumentArchive::buildFilters()
{
    auto* line = new QHBoxLayout;
    line->setSpacing(8);
    const auto add = [&](const QString& text, QWidget* field, int width) {
        auto* label = new FieldLabel(text, Required::No, this);
        label->nameField(field);
        field->setFixedWidth(width);
        line->addWidget(label);
        line->addWidget(field);
        line->addSpacing(8);
    };
    m_kind = new QComboBox(this);
    fillChoices<DocType>(m_kind, u"全部"_s);
    m_year = new QComboBox(this);
    m_year->addItem(u"全部"_s, 0);
    m_keyword = new QLineEdit(this);
    m_keyword->setPlaceholderText(u"编号、标题或补充说明"_s);
    m_keyword->setClearButtonEnabled(true);
    add(u"类型"_s, m_kind, 190);
    add(u"年份"_s, m_year, 110);
    add(u"关键字"_s, m_keyword, 240);
    line->addStretch();
    connect(m_kind, &QComboBox::currentIndexChanged, this, &DocumentArchive::applyFilter);
    connect(m_year, &QComboBox::currentIndexChanged, this, &DocumentArchive::applyFilter);
    connect(m_keyword, &QLineEdit::textChanged, this, &DocumentArchive::applyFilter);
    return line;
}

void DocumentArchive::buildTable()
{
    m_table = new QTableView(m_stack);
    m_table->setObjectName(u"documentTable"_s);
    ViewStyle::setUpTable(m_table, u"文书档案"_s);
    m_table->setModel(m_filter);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setSortingEnabled(true);
    // As stored, newest first, until a column is asked for.
    m_table->sortByColumn(-1, Qt::AscendingOrder);
    m_table->setContextMenuPolicy(Qt::ActionsContextMenu);
    QHeaderView* header = m_table->horizontalHeader();
    header->setSectionResizeMode(DocumentModel::Title, QHeaderView::Stretch);
    m_table->setColumnWidth(DocumentModel::Number, 168);
    m_table->setColumnWidth(DocumentModel::Kind, 156);
    m_table->setColumnWidth(DocumentModel::Date, 108);
    m_table->setColumnWidth(DocumentModel::Covered, 128);
    m_table->setColumnWidth(DocumentModel::File, 72);
    m_stack->addWidget(m_table);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
        &DocumentArchive::onSelectionChanged);
    connect(m_table, &QTableView::clicked, this, [this](const QModelIndex& index) {
        if (index.column() == DocumentModel::Covered)
            showEntries();
    });
    connect(m_table, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (index.column() != DocumentModel::Covered)
            m_commands.first()->trigger();
    });
}

QHBoxLayout* DocumentArchive::buildCommands()
{
    auto* line = new QHBoxLayout;
    line->setSpacing(8);
    const auto reading = [this](auto act) {
        return [this, act] {
            act(this, selectedId());
            refresh(); // a missing file may have been written again
        };
    };
    QAction* open = addCommand(line, u"打开"_s, { Qt::Key_Return, Qt::Key_Enter });
    QAction* print = addCommand(line, u"打印"_s, { Qt::CTRL | Qt::Key_P });
    QAction* folder = addCommand(line, u"文件夹"_s, { Qt::CTRL | Qt::Key_E });
    m_showEntries = addCommand(line, u"查看覆盖流水"_s, { Qt::CTRL | Qt::Key_L });
    line->addStretch();
    QAction* again = addCommand(line, u"重新生成"_s, { Qt::CTRL | Qt::Key_R });
    QAction* remove = addCommand(line, u"删除"_s, { Qt::Key_Delete });
    connect(open, &QAction::triggered, this, reading(DocumentActions::open));
    connect(print, &QAction::triggered, this, reading(DocumentActions::print));
    connect(folder, &QAction::triggered, this, reading(DocumentActions::showInFolder));
    connect(m_showEntries, &QAction::triggered, this, &DocumentArchive::showEntries);
    connect(again, &QAction::triggered, this, &DocumentArchive::onRegenerate);
    connect(remove, &QAction::triggered, this, &DocumentArchive::onRemove);
    return line;
}

QAction* DocumentArchive::addCommand(
    QHBoxLayout* line, const QString& text, const QList<QKeySequence>& keys)
{
    auto* action = new QAction(text, this);
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    m_table->addAction(action);
    m_commands += action;
    QPushButton* button = makeButton(text, ButtonRole::Default, this);
    button->setToolTip(u"%1（%2）"_s.arg(text, keys.first().toString(QKeySequence::NativeText)));
    line->addWidget(button);
    connect(button, &QPushButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::enabledChanged, button, &QPushButton::setEnabled);
    return action;
}

void DocumentArchive::request(qint64 docId)
{
    m_requested = docId;
}

void DocumentArchive::refresh()
{
    DocumentDao documents;
    LinkDao links;
    QList<ArchivedDocument> rows;
    for (const DocumentRecord& record : documents.listWithoutContent())
        rows += archived(record, links);
    const QString error
        = documents.lastError().isEmpty() ? links.lastError() : documents.lastError();
    m_notice->setVisible(!error.isEmpty());
    m_notice->setKind(error.isEmpty() ? BannerKind::Info : BannerKind::Danger);
    m_notice->setText(u"文书档案读取失败：%1"_s.arg(error));
    // An unreadable archive is no empty one.
    if (!error.isEmpty())
        return;

    const qint64 before = selectedId();
    m_model->setDocuments(rows);
    fillYears();
    applyFilter();
    showLeftovers();
    if (m_requested > 0)
        showRequested();
    else
        select(before);
}

void DocumentArchive::showRequested()
{
    const qint64 wanted = std::exchange(m_requested, 0);
    const QList<ArchivedDocument>& all = m_model->documents();
    const bool known = std::any_of(all.begin(), all.end(),
        [wanted](const ArchivedDocument& document) { return document.record.id == wanted; });
    if (!known) {
        m_notice->setText(u"要查看的文书已不存在。"_s);
        m_notice->show();
        return;
    }
    if (!select(wanted)) {
        clearFilter();
        select(wanted);
    }
    m_table->setFocus();
}

void DocumentArchive::showLeftovers()
{
    const QStringList files = DocumentFiles::filesWithoutRow();
    if (files.isEmpty())
        return;
    m_notice->setText(
        u"导出文件夹中有 %1 个 PDF 不属于任何文书（如 %2），请核对后自行处理；软件不会删除它们。"_s
            .arg(QString::number(files.size()), QFileInfo(files.first()).fileName()));
    m_notice->show();
}

void DocumentArchive::fillYears()
{
    std::set<int, std::greater<>> years;
    for (const ArchivedDocument& document : m_model->documents())
        years.insert(DocumentRules::numberingYear(document.record));
    const QSignalBlocker silent(m_year);
    const int chosen = m_year->currentData().toInt();
    m_year->clear();
    m_year->addItem(u"全部"_s, 0);
    for (const int year : years)
        m_year->addItem(u"%1 年"_s.arg(year), year);
    m_year->setCurrentIndex(std::max(0, m_year->findData(chosen)));
}

void DocumentArchive::applyFilter()
{
    m_filter->setWanted({ .kind = choiceOf<DocType>(m_kind),
        .year = m_year->currentData().toInt(),
        .keyword = m_keyword->text().trimmed() });
    m_stack->setCurrentIndex(m_filter->rowCount() > 0 ? 0 : 1);
    const bool none = m_model->rowCount() == 0;
    m_empty->setTexts(none ? u"还没有文书"_s : u"没有符合条件的文书"_s,
        none ? u"在前面三个页签生成的文书会存放在这里。"_s : u"请更换类型、年份或关键字。"_s);
    m_empty->setAction(none ? QString() : u"清除筛选"_s);
    onSelectionChanged();
}

void DocumentArchive::clearFilter()
{
    {
        const QSignalBlocker silentKind(m_kind);
        const QSignalBlocker silentYear(m_year);
        const QSignalBlocker silentKeyword(m_keyword);
        m_kind->setCurrentIndex(0);
        m_year->setCurrentIndex(0);
        m_keyword->clear();
    }
    applyFilter();
}

bool DocumentArchive::select(qint64 docId)
{
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (m_model->at(row).record.id != docId)
            continue;
        const QModelIndex index = m_filter->mapFromSource(m_model->index(row, 0));
        if (!index.isValid())
            return false;
        m_table->setCurrentIndex(index);
        m_table->scrollTo(index);
        return true;
    }
    return false;
}

const ArchivedDocument* DocumentArchive::selected() const
{
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    if (rows.isEmpty())
        return nullptr;
    return &m_model->at(m_filter->mapToSource(rows.first()).row());
}

qint64 DocumentArchive::selectedId() const
{
    const ArchivedDocument* document = selected();
    return document ? document->record.id : 0;
}

void DocumentArchive::onSelectionChanged()
{
    const ArchivedDocument* document = selected();
    for (QAction* command : m_commands)
        command->setEnabled(document);
    m_showEntries->setEnabled(document && !document->coveredIds.isEmpty());
}

void DocumentArchive::showEntries()
{
    const ArchivedDocument* document = selected();
    if (document && !document->coveredIds.isEmpty())
        emit entriesRequested(QList<qint64>(document->coveredIds));
}

void DocumentArchive::onRegenerate()
{
    if (!DocumentActions::regenerate(this, selectedId()))
        return;
    refresh();
    Toast::show(window(), u"文书已重新生成"_s);
}

void DocumentArchive::onRemove()
{
    if (!DocumentActions::remove(this, selectedId()))
        return;
    refresh();
    emit removed();
    Toast::show(window(), u"文书已删除"_s);
}
