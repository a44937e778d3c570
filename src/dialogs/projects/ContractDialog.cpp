#include "dialogs/projects/ContractDialog.h"

#include "db/ContractDao.h"
#include "dialogs/projects/RecordFields.h"
#include "services/projects/ProjectService.h"
#include "widgets/AmountField.h"
#include "widgets/CodeChoice.h"
#include "widgets/DateEditor.h"
#include "widgets/FormRows.h"
#include "widgets/MessageBox.h"
#include "widgets/TextRole.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using ProjectRules::ContractField;

namespace {

constexpr int noteHeight = 80;

} // namespace

ContractDialog::ContractDialog(qint64 projectId, qint64 contractId, QWidget* parent)
    : FormDialog(contractId > 0 ? u"编辑合同"_s : u"登记合同"_s, parent)
{
    setObjectName(u"ContractDialog"_s);
    load(projectId, contractId);
    buildForm();
    showContract();
    // What counts as unchanged is what the form makes of the stored values.
    m_contract = edited();
    resize(560, sizeHint().height());
}

void ContractDialog::load(qint64 projectId, qint64 contractId)
{
    if (contractId <= 0) {
        m_contract.projectId = projectId;
        m_contract.signDate = QDate::currentDate();
        return;
    }
    ContractDao contracts;
    if (const auto stored = contracts.findById(contractId))
        m_contract = *stored;
    else
        m_unreadable = contracts.lastError().isEmpty()
            ? u"该合同可能已被删除。"_s
            : u"合同记录读取失败：%1"_s.arg(contracts.lastError());
}

int ContractDialog::exec()
{
    if (m_unreadable.isEmpty())
        return FormDialog::exec();
    MessageBox::warn(parentWidget(), u"无法打开合同"_s, m_unreadable);
    return Rejected;
}

void ContractDialog::makeFields()
{
    m_name = RecordFields::makeText(
        u"name"_s, u"必填，合同/协议名称"_s, ProjectRules::longestContractName, this);
    m_code = RecordFields::makeText(u"code"_s, u"留空自动生成 HT-yyyy-序号"_s, 0, this);
    m_partyB = RecordFields::makeText(
        u"partyB"_s, u"必填，对方当事人全称"_s, ProjectRules::longestParty, this);
    m_amount = RecordFields::makeAmount(u"amount"_s, this);
    m_amount->setSpecialValueText(u"未约定金额"_s);
    m_signDate = new DateEditor(DateEditor::Empty::Forbidden, this);
    m_signDate->setObjectName(u"signDate"_s);
    m_status = new QComboBox(this);
    m_status->setObjectName(u"status"_s);
    fillChoices<ContractStatus>(m_status);
    m_note = RecordFields::makeNote(noteHeight, this);
}

void ContractDialog::buildForm()
{
    makeFields();
    auto* rows = new FormRows;
    rows->addRow(u"合同名称"_s, m_name, Required::Trailing);
    rows->addRow(u"合同编号"_s, m_code);
    rows->addRow(u"对方当事人"_s, m_partyB, Required::Trailing);
    rows->addRow(u"合同金额"_s, m_amount);
    rows->addRow(u"签订日期"_s, m_signDate, Required::Trailing);
    rows->addRow(u"状态"_s, m_status);
    rows->addRow(u"备注"_s, m_note);
    body()->addLayout(rows);
    auto* hint = new QLabel(u"提示：合同原件请扫描后到「凭证归档库」上传并关联本项目。"_s, this);
    setTextRole(hint, TextRole::Hint);
    hint->setWordWrap(true);
    body()->addWidget(hint);
    body()->addStretch();

    addRejectButton(u"取消"_s);
    connect(addPrimaryButton(u"保存"_s), &QPushButton::clicked, this, &ContractDialog::onSave);
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, this,
        &ContractDialog::onSave);
}

void ContractDialog::showContract()
{
    RecordFields::show(m_name, m_contract.name);
    RecordFields::show(m_code, m_contract.code);
    RecordFields::show(m_partyB, m_contract.partyB);
    RecordFields::show(m_amount, m_contract.amountFen);
    RecordFields::show(m_signDate, m_contract.signDate, m_contract.signDateText);
    setChoice<ContractStatus>(m_status, m_contract.status);
    m_note->setPlainText(m_contract.note);
}

Contract ContractDialog::edited() const
{
    Contract contract = m_contract;
    contract.name = m_name->text();
    contract.code = m_code->text();
    contract.partyB = m_partyB->text();
    contract.amountFen = m_amount->amountFen();
    contract.signDate = m_signDate->date();
    contract.signDateText = m_signDate->text();
    contract.status = choiceOf<ContractStatus>(m_status).value_or(m_contract.status);
    contract.note = m_note->toPlainText();
    return ProjectRules::normalized(contract);
}

bool ContractDialog::hasUnsavedInput() const
{
    return edited() != m_contract;
}

void ContractDialog::onSave()
{
    Contract contract = edited();
    if (const auto problem = ProjectRules::firstProblem(contract)) {
        MessageBox::warn(this, problem->title, problem->text);
        focus(problem->field);
        return;
    }
    if (const auto saved = ProjectService::saveContract(contract); !saved.ok) {
        MessageBox::warn(this, u"保存失败"_s, saved.message);
        return;
    }
    m_contract = contract;
    accept();
}

void ContractDialog::focus(ContractField field)
{
    const QMap<ContractField, QWidget*> fields { { ContractField::Name, m_name },
        { ContractField::PartyB, m_partyB }, { ContractField::SignDate, m_signDate },
        { ContractField::Note, m_note } };
    fields.value(field)->setFocus();
}
