#include "pages/documents/IndependenceForm.h"

#include "services/documents/DocumentTexts.h"
#include "widgets/Card.h"
#include "widgets/DateEditor.h"
#include "widgets/FormRows.h"

#include <QCheckBox>
#include <QPlainTextEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int furtherHeight = 96;

} // namespace

IndependenceForm::IndependenceForm(QWidget* parent)
    : DocumentForm(u"IndependenceForm"_s, parent)
{
    auto* head = new Card(u"声明基准日"_s, this);
    auto* rows = new FormRows;
    m_baseDate = new DateEditor(DateEditor::Empty::Forbidden, head);
    m_baseDate->setObjectName(u"baseDate"_s);
    m_baseDate->setToday();
    rows->addRow(u"声明基准日"_s, m_baseDate, Required::Yes,
        u"声明所述情况截至这一天，常用年末或出具声明的当天。"_s);
    head->body()->addLayout(rows);
    body()->addWidget(head);

    auto* card = new Card(u"已采取的独立性措施"_s, this);
    card->setHint(u"只勾选公司确实做到的：声明人要对内容负责。"_s);
    for (const QString& measure : DocumentTexts::independenceMeasures()) {
        auto* box = new QCheckBox(measure, card);
        box->setChecked(true);
        connect(box, &QCheckBox::toggled, this, &IndependenceForm::inputChanged);
        m_measures += box;
        card->body()->addWidget(box);
    }
    m_further = new QPlainTextEdit(card);
    m_further->setObjectName(u"furtherMeasures"_s);
    m_further->setTabChangesFocus(true);
    m_further->setFixedHeight(furtherHeight);
    auto* label = new FieldLabel(u"其他独立性措施"_s, Required::No, card);
    label->nameField(m_further);
    card->body()->addWidget(label);
    card->body()->addWidget(m_further);
    body()->addWidget(card);
    body()->addStretch();

    connect(m_baseDate, &DateEditor::dateChanged, this, &IndependenceForm::inputChanged);
    connect(m_further, &QPlainTextEdit::textChanged, this, &IndependenceForm::inputChanged);
}

IndependenceStatementInput IndependenceForm::input() const
{
    IndependenceStatementInput input { .baseDate = m_baseDate->date(),
        .furtherMeasures = m_further->toPlainText() };
    for (const QCheckBox* measure : m_measures) {
        if (measure->isChecked())
            input.measures += measure->text();
    }
    return input;
}

QWidget* IndependenceForm::firstField() const
{
    return m_baseDate;
}

QString IndependenceForm::firstProblem() const
{
    return DocumentRules::firstProblem(input());
}

QString IndependenceForm::previewHtml() const
{
    return DocumentService().preview(input());
}

DocumentResult IndependenceForm::generate()
{
    return DocumentService().generateIndependenceStatement(input());
}

void IndependenceForm::prepareNext()
{
    m_baseDate->setToday();
    for (QCheckBox* measure : m_measures)
        measure->setChecked(true);
    m_further->clear();
}
