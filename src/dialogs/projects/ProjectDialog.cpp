#include "dialogs/projects/ProjectDialog.h"

#include "db/ProjectDao.h"
#include "dialogs/projects/RecordFields.h"
#include "services/projects/ProjectService.h"
#include "widgets/AmountField.h"
#include "widgets/CodeChoice.h"
#include "widgets/DateEditor.h"
#include "widgets/FormRows.h"
#include "widgets/MessageBox.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using ProjectRules::ProjectField;

namespace {

constexpr int noteHeight = 90;

// Widgets side by side in one row of the form; the editors share the room.
QWidget* sideBySide(std::initializer_list<QWidget*> widgets, QWidget* parent)
{
    auto* wrapper = new QWidget(parent);
    auto* line = new QHBoxLayout(wrapper);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(8);
    for (QWidget* widget : widgets) {
        const bool isText = qobject_cast<QLabel*>(widget) || qobject_cast<QCheckBox*>(widget);
        line->addWidget(widget, isText ? 0 : 1);
    }
    return wrapper;
}

DateEditor* makeDate(const QString& objectName, QWidget* parent)
{
    auto* editor = new DateEditor(DateEditor::Empty::Allowed, parent);
    editor->setObjectName(objectName);
    editor->setPlaceholderText(u"未设置"_s);
    return editor;
}

} // namespace

ProjectDialog::ProjectDialog(qint64 id, QWidget* parent)
    : FormDialog(id > 0 ? u"编辑项目"_s : u"新增项目"_s, parent)
{
    setObjectName(u"ProjectDialog"_s);
    load(id);
    buildForm();
    showProject();
    // What counts as unchanged is what the form makes of the stored values.
    m_project = edited();
    resize(560, sizeHint().height());
}

void ProjectDialog::load(qint64 id)
{
    if (id <= 0) {
        m_project.startDate = QDate::currentDate();
        return;
    }
    ProjectDao projects;
    if (const auto stored = projects.findById(id))
        m_project = *stored;
    else
        m_unreadable = projects.lastError().isEmpty()
            ? u"该项目可能已被删除。"_s
            : u"项目记录读取失败：%1"_s.arg(projects.lastError());
}

int ProjectDialog::exec()
{
    if (m_unreadable.isEmpty())
        return FormDialog::exec();
    MessageBox::warn(parentWidget(), u"无法打开项目"_s, m_unreadable);
    return Rejected;
}

void ProjectDialog::makeFields()
{
    m_name = RecordFields::makeText(
        u"name"_s, u"必填，≤50 字"_s, ProjectRules::longestProjectName, this);
    m_code = RecordFields::makeText(u"code"_s, u"留空自动生成 P-yyyy-序号"_s, 0, this);
    m_clientName = RecordFields::makeText(
        u"clientName"_s, u"必填，客户/合作方名称"_s, ProjectRules::longestClientName, this);
    m_status = new QComboBox(this);
    m_status->setObjectName(u"status"_s);
    fillChoices<ProjectStatus>(m_status);
    m_start = makeDate(u"startDate"_s, this);
    m_end = makeDate(u"endDate"_s, this);
    m_hasBudget = new QCheckBox(u"设置预算"_s, this);
    m_hasBudget->setObjectName(u"hasBudget"_s);
    m_budget = RecordFields::makeAmount(u"budget"_s, this);
    m_budget->setEnabled(false);
    connect(m_hasBudget, &QCheckBox::toggled, m_budget, &QWidget::setEnabled);
    m_manager = RecordFields::makeText(u"manager"_s, u"选填"_s, ProjectRules::longestManager, this);
    m_note = RecordFields::makeNote(noteHeight, this);
}

void ProjectDialog::buildForm()
{
    makeFields();
    auto* rows = new FormRows;
    rows->addRow(u"项目名称"_s, m_name, Required::Trailing);
    rows->addRow(u"项目编号"_s, m_code);
    rows->addRow(u"客户名称"_s, m_clientName, Required::Trailing);
    rows->addRow(u"项目状态"_s, m_status);
    rows->addWrappedRow(
        u"起止日期"_s, sideBySide({ m_start, new QLabel(u"至"_s, this), m_end }, this), m_start);
    m_start->setAccessibleName(u"开始日期"_s);
    m_end->setAccessibleName(u"结束日期"_s);
    rows->addWrappedRow(u"预算金额"_s, sideBySide({ m_hasBudget, m_budget }, this), m_budget);
    rows->addRow(u"负责人"_s, m_manager);
    rows->addRow(u"备注"_s, m_note);
    body()->addLayout(rows);
    body()->addStretch();

    addRejectButton(u"取消"_s);
    connect(addPrimaryButton(u"保存"_s), &QPushButton::clicked, this, &ProjectDialog::onSave);
    connect(new QShortcut(QKeySequence::Save, this), &QShortcut::activated, this,
        &ProjectDialog::onSave);
}

void ProjectDialog::showProject()
{
    RecordFields::show(m_name, m_project.name);
    RecordFields::show(m_code, m_project.code);
    RecordFields::show(m_clientName, m_project.clientName);
    setChoice<ProjectStatus>(m_status, m_project.status);
    RecordFields::show(m_start, m_project.startDate, m_project.startDateText);
    RecordFields::show(m_end, m_project.endDate, m_project.endDateText);
    m_hasBudget->setChecked(m_project.budgetFen.has_value());
    RecordFields::show(m_budget, m_project.budgetFen.value_or(0));
    RecordFields::show(m_manager, m_project.manager);
    m_note->setPlainText(m_project.note);
}

Project ProjectDialog::edited() const
{
    Project project = m_project;
    project.name = m_name->text();
    project.code = m_code->text();
    project.clientName = m_clientName->text();
    project.status = choiceOf<ProjectStatus>(m_status).value_or(m_project.status);
    project.startDate = m_start->date();
    project.startDateText = m_start->text();
    project.endDate = m_end->date();
    project.endDateText = m_end->text();
    project.budgetFen.reset();
    if (m_hasBudget->isChecked())
        project.budgetFen = m_budget->amountFen();
    project.manager = m_manager->text();
    project.note = m_note->toPlainText();
    return ProjectRules::normalized(project);
}

bool ProjectDialog::hasUnsavedInput() const
{
    return edited() != m_project;
}

void ProjectDialog::onSave()
{
    Project project = edited();
    if (const auto problem = ProjectRules::firstProblem(project)) {
        MessageBox::warn(this, problem->title, problem->text);
        focus(problem->field);
        return;
    }
    if (const auto saved = ProjectService::saveProject(project); !saved.ok) {
        MessageBox::warn(this, u"保存失败"_s, saved.message);
        return;
    }
    m_project = project;
    accept();
}

void ProjectDialog::focus(ProjectField field)
{
    const QMap<ProjectField, QWidget*> fields { { ProjectField::Name, m_name },
        { ProjectField::ClientName, m_clientName }, { ProjectField::StartDate, m_start },
        { ProjectField::EndDate, m_end }, { ProjectField::Note, m_note } };
    fields.value(field)->setFocus();
}
