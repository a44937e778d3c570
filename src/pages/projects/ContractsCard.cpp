#include "pages/projects/ContractsCard.h"

#include "db/ContractDao.h"
#include "db/ProfileDao.h"
#include "db/VoucherDao.h"
#include "dialogs/projects/ContractDialog.h"
#include "pages/projects/ContractNameDelegate.h"
#include "pages/projects/ContractTableModel.h"
#include "pages/projects/DetailTable.h"
#include "pages/projects/VoucherTies.h"
#include "services/projects/ProjectService.h"
#include "widgets/Card.h"
#include "widgets/ElidedLabel.h"
#include "widgets/LinkCellDelegate.h"
#include "widgets/MessageBox.h"
#include "widgets/RowCommands.h"
#include "widgets/TextRole.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostRows = 8;

// For 13 px text. In a window of 1280 px there is room for the heads and the buttons; below, the
// parties give way with the name, and what a larger window has goes to these three.
const QList<ColumnWidths::Width> widths { { 98, 0 }, { 100, 3 }, { 72, 1 }, { 72, 1 }, { 94, 0 },
    { 84, 0 }, { 82, 0 }, { 72, 0 } };

} // namespace

ContractsCard::ContractsCard(QWidget* parent)
    : QWidget(parent)
    , m_card(new Card(u"合同（0）"_s, this))
    , m_model(new ContractTableModel(this))
    , m_empty(new QLabel(u"尚未登记合同。"_s, m_card))
{
    setObjectName(u"ContractsCard"_s);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_card);
    QPushButton* add = makeButton(u"＋ 登记合同"_s, ButtonRole::Primary, m_card);
    add->setObjectName(u"addContract"_s);
    m_card->addHeadWidget(add);
    connect(add, &QPushButton::clicked, this, &ContractsCard::onAddContract);

    buildTable();
    m_card->body()->addWidget(m_table);
    setTextRole(m_empty, TextRole::Hint);
    m_card->body()->addWidget(m_empty);
    buildVoucherLine();
    m_card->body()->addWidget(m_voucherLine);
    addCommands();
}

void ContractsCard::buildTable()
{
    m_table = new DetailTable(u"合同"_s, m_model, widths, mostRows, m_card);
    m_table->setObjectName(u"contracts"_s);
    m_table->setItemDelegateForColumn(ContractTableModel::Name, new ContractNameDelegate(m_table));
    auto* links = new LinkCellDelegate(m_table);
    m_table->setItemDelegateForColumn(ContractTableModel::Actions, links);
    connect(
        links, &LinkCellDelegate::triggered, this, [this](const QModelIndex& index, int action) {
            const Contract contract = m_model->at(index.row());
            if (action == ContractTableModel::Edit)
                onEdit(contract);
            else
                onRemove(contract);
        });
    connect(m_table, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        if (index.column() != ContractTableModel::Actions)
            onEdit(Contract(m_model->at(index.row())));
    });
    connect(m_table->selectionModel(), &QItemSelectionModel::currentChanged, this,
        &ContractsCard::showVoucherLine);
}

void ContractsCard::buildVoucherLine()
{
    m_voucherLine = new QWidget(m_card);
    auto* line = new QHBoxLayout(m_voucherLine);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(8);
    m_voucherText = new ElidedLabel(m_voucherLine);
    m_voucherText->setObjectName(u"contractVouchers"_s);
    setTextRole(m_voucherText, TextRole::Hint);
    line->addWidget(m_voucherText, 1);
    using Act = void (ContractsCard::*)(const Contract&);
    const auto addButton = [&](const QString& text, Act act) {
        QPushButton* button = makeButton(text, ButtonRole::Default, m_voucherLine);
        connect(button, &QPushButton::clicked, this, [this, act] {
            if (const Contract* contract = current())
                (this->*act)(Contract(*contract));
        });
        line->addWidget(button);
    };
    addButton(u"关联凭证"_s, &ContractsCard::onLinkVouchers);
    addButton(u"解除关联"_s, &ContractsCard::onUnlinkVouchers);
}

void ContractsCard::addCommands()
{
    auto* commands = new RowCommands(m_table);
    using Act = void (ContractsCard::*)(const Contract&);
    const auto add = [&](const QString& text, const QList<QKeySequence>& keys, Act act) {
        commands->add(text, keys, [this, act](const QModelIndex& index) {
            (this->*act)(Contract(m_model->at(index.row())));
        });
    };
    add(u"编辑"_s, { Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2 }, &ContractsCard::onEdit);
    add(u"关联凭证"_s, { Qt::CTRL | Qt::Key_L }, &ContractsCard::onLinkVouchers);
    add(u"解除关联"_s, { Qt::CTRL | Qt::SHIFT | Qt::Key_L }, &ContractsCard::onUnlinkVouchers);
    add(u"删除"_s, { Qt::Key_Delete }, &ContractsCard::onRemove);
}

QString ContractsCard::showProject(qint64 projectId)
{
    m_projectId = projectId;
    ContractDao contracts;
    ContractTableModel::Content content;
    content.contracts = contracts.listByProject(projectId);
    content.voucherCounts = contracts.voucherCounts(projectId);
    content.ourParty = ProfileDao().load().companyName;
    m_table->keepingCurrent([&] { m_model->setContent(content); });
    m_card->setTitle(u"合同（%1）"_s.arg(content.contracts.size()));
    m_empty->setVisible(content.contracts.isEmpty() && contracts.lastError().isEmpty());
    showVoucherLine();
    return contracts.lastError().isEmpty() ? QString()
                                           : u"合同读取失败：%1"_s.arg(contracts.lastError());
}

const Contract* ContractsCard::current() const
{
    const QModelIndex index = m_table->currentIndex();
    return index.isValid() ? &m_model->at(index.row()) : nullptr;
}

void ContractsCard::showVoucherLine()
{
    const Contract* contract = current();
    m_voucherLine->setVisible(contract != nullptr);
    if (!contract)
        return;
    const std::optional<int> count = m_model->voucherCount(contract->id);
    m_voucherText->setText(count
            ? u"合同「%1」已关联凭证 %2 张"_s.arg(contract->name, QString::number(*count))
            : u"合同「%1」的关联凭证读取失败"_s.arg(contract->name));
}

void ContractsCard::onAddContract()
{
    if (ContractDialog(m_projectId, 0, this).exec() == QDialog::Accepted)
        emit changed();
}

void ContractsCard::onEdit(const Contract& contract)
{
    // One that cannot be opened any more should not stay in the list either.
    ContractDialog(m_projectId, contract.id, this).exec();
    emit changed();
}

void ContractsCard::onRemove(const Contract& contract)
{
    if (!MessageBox::ask(this, u"确认删除合同"_s,
            u"确认删除合同「%1」？合同关联的凭证将解除关联（不删文件）。"_s.arg(contract.name),
            u"删除"_s, u"取消"_s, ButtonRole::Danger))
        return;
    if (const auto removed = ProjectService::removeContract(contract.id); !removed.ok)
        MessageBox::warn(this, u"删除失败"_s, removed.message);
    emit changed();
}

void ContractsCard::onLinkVouchers(const Contract& contract)
{
    const QList<Voucher> tied = VoucherDao().listByContract(contract.id);
    // After a failure too: what is shown may be older than what is stored.
    if (VoucherTies::add(this, TargetType::Contract, contract.id, tied)
        != VoucherTies::Outcome::Declined)
        emit changed();
}

void ContractsCard::onUnlinkVouchers(const Contract& contract)
{
    VoucherDao vouchers;
    const QList<Voucher> linked = vouchers.listByContract(contract.id);
    if (linked.isEmpty()) {
        const bool failed = !vouchers.lastError().isEmpty();
        MessageBox::info(this, u"解除关联"_s,
            failed ? u"关联凭证读取失败：%1"_s.arg(vouchers.lastError())
                   : u"合同「%1」没有关联的凭证。"_s.arg(contract.name));
        return;
    }
    if (VoucherTies::remove(this, contract, linked) != VoucherTies::Outcome::Declined)
        emit changed();
}
