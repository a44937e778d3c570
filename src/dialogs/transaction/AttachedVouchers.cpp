#include "dialogs/transaction/AttachedVouchers.h"

#include "db/LinkDao.h"
#include "db/VoucherDao.h"
#include "services/vouchers/VoucherFiles.h"
#include "widgets/ButtonRole.h"
#include "widgets/TextRole.h"
#include "widgets/ViewStyle.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRowsShown = 4;
constexpr int changeWidth = 176;

// A voucher that cannot be read still has its line: its link is there.
Voucher voucherOf(qint64 id)
{
    Voucher unreadable;
    unreadable.id = id;
    unreadable.name = u"凭证 #%1（读取失败）"_s.arg(id);
    return VoucherDao().findById(id).value_or(unreadable);
}

QTableView* makeTable(AttachedVoucherModel* model, QWidget* parent)
{
    auto* table = new QTableView(parent);
    table->setObjectName(u"attachedVouchers"_s);
    ViewStyle::setUpTable(table, u"关联凭证"_s);
    table->setModel(model);
    table->setSelectionMode(QAbstractItemView::SingleSelection);
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    QHeaderView* header = table->horizontalHeader();
    header->hide();
    header->setSectionResizeMode(AttachedVoucherModel::Description, QHeaderView::Stretch);
    header->setSectionResizeMode(AttachedVoucherModel::Change, QHeaderView::Fixed);
    header->resizeSection(AttachedVoucherModel::Change, changeWidth);
    return table;
}

} // namespace

AttachedVouchers::AttachedVouchers(QWidget* parent)
    : QWidget(parent)
    , m_model(new AttachedVoucherModel(this))
    , m_table(makeTable(m_model, this))
    , m_empty(new QLabel(
          u"尚未关联凭证。可以用下面的按钮添加，也可以把文件拖到本窗口，或按 Ctrl+V 粘贴截图。"_s,
          this))
{
    m_empty->setTextFormat(Qt::PlainText);
    m_empty->setWordWrap(true);
    setTextRole(m_empty, TextRole::Hint);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(m_empty);
    column->addWidget(m_table);
    column->addWidget(buildButtons());
    connectSignals();
    updateView();
}

QWidget* AttachedVouchers::buildButtons()
{
    auto* bar = new QWidget(this);
    auto* line = new QHBoxLayout(bar);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(8);
    QPushButton* archived = makeButton(u"添加已归档凭证…"_s, ButtonRole::Default, bar);
    QPushButton* local = makeButton(u"从本地添加新凭证…"_s, ButtonRole::Default, bar);
    m_open = makeButton(u"打开凭证"_s, ButtonRole::Default, bar);
    m_toggle = makeButton(u"移除关联"_s, ButtonRole::Default, bar);
    line->addWidget(archived);
    line->addWidget(local);
    line->addStretch();
    line->addWidget(m_open);
    line->addWidget(m_toggle);
    connect(archived, &QPushButton::clicked, this, &AttachedVouchers::archivedWanted);
    connect(local, &QPushButton::clicked, this, &AttachedVouchers::newWanted);
    connect(m_open, &QPushButton::clicked, this, &AttachedVouchers::openCurrent);
    connect(m_toggle, &QPushButton::clicked, this, &AttachedVouchers::toggleCurrent);
    return bar;
}

void AttachedVouchers::connectSignals()
{
    connect(m_model, &AttachedVoucherModel::changed, this, &AttachedVouchers::updateView);
    connect(m_model, &AttachedVoucherModel::changed, this, &AttachedVouchers::changed);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentChanged, this,
        &AttachedVouchers::updateButtons);
    connect(m_table, &QTableView::doubleClicked, this, &AttachedVouchers::openCurrent);
    // As shortcuts: the key itself would go on to the dialog and save it.
    const auto onKey = [this](const QKeySequence& key, void (AttachedVouchers::*act)()) {
        auto* shortcut = new QShortcut(key, m_table);
        shortcut->setContext(Qt::WidgetShortcut);
        connect(shortcut, &QShortcut::activated, this, act);
    };
    onKey(Qt::Key_Return, &AttachedVouchers::openCurrent);
    onKey(Qt::Key_Enter, &AttachedVouchers::openCurrent);
    onKey(QKeySequence::Delete, &AttachedVouchers::toggleCurrent);
}

void AttachedVouchers::showVouchersOf(qint64 entryId)
{
    QList<Voucher> vouchers;
    if (entryId > 0) {
        for (const EntityLink& link : LinkDao().linksByTarget(TargetType::Transaction, entryId)) {
            if (link.sourceType == SourceType::Voucher)
                vouchers += voucherOf(link.sourceId);
        }
    }
    m_model->setAttached(vouchers);
    updateView();
}

void AttachedVouchers::add(const QList<qint64>& voucherIds)
{
    for (const qint64 id : voucherIds)
        m_model->add(voucherOf(id));
}

void AttachedVouchers::openCurrent()
{
    const QModelIndex current = m_table->currentIndex();
    if (current.isValid())
        VoucherFiles::openVoucherFile(this, m_model->idAt(current.row()));
}

void AttachedVouchers::toggleCurrent()
{
    const QModelIndex current = m_table->currentIndex();
    if (current.isValid())
        m_model->toggle(current.row());
}

void AttachedVouchers::updateView()
{
    const int rows = m_model->rowCount();
    if (rows == 0 && m_table->hasFocus())
        focusNextChild();
    m_empty->setVisible(rows == 0);
    m_table->setVisible(rows > 0);
    m_open->setVisible(rows > 0);
    m_toggle->setVisible(rows > 0);
    const int frame = 4;
    m_table->setFixedHeight(std::clamp(rows, 1, mostRowsShown) * ViewStyle::rowHeight + frame);
    if (rows > 0 && !m_table->currentIndex().isValid())
        m_table->setCurrentIndex(m_model->index(0, 0));
    updateButtons();
}

void AttachedVouchers::updateButtons()
{
    const QModelIndex current = m_table->currentIndex();
    m_open->setEnabled(current.isValid());
    m_toggle->setEnabled(current.isValid());
    const bool isRemoved = current.isValid()
        && m_model->stateAt(current.row()) == AttachedVoucherModel::State::Removed;
    m_toggle->setText(isRemoved ? u"保留关联"_s : u"移除关联"_s);
}
