#include "dialogs/vouchers/VoucherFields.h"

#include "core/TextRules.h"
#include "widgets/CodeChoice.h"
#include "widgets/DateEditor.h"
#include "widgets/FormRows.h"
#include "widgets/TextCount.h"

#include <QPlainTextEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using VoucherRules::Field;

namespace {

constexpr int noteHeight = 64;

} // namespace

VoucherFields::VoucherFields(QWidget* parent)
    : QObject(parent)
    , m_name(new QLineEdit(parent))
    , m_type(new QComboBox(parent))
    , m_date(new DateEditor(DateEditor::Empty::Forbidden, parent))
    , m_note(new QPlainTextEdit(parent))
{
    m_name->setObjectName(u"voucherName"_s);
    m_type->setObjectName(u"voucherType"_s);
    m_date->setObjectName(u"voucherDate"_s);
    m_note->setObjectName(u"voucherNote"_s);
    m_note->setPlaceholderText(u"选填，≤500 字"_s);
    m_note->setFixedHeight(noteHeight);
    fillChoices<VoucherType>(m_type);
}

void VoucherFields::addTo(FormRows* rows, Required typeAndDate)
{
    rows->addRow(u"凭证名称"_s, m_name, Required::Trailing);
    rows->addRow(u"凭证类型"_s, m_type, typeAndDate);
    rows->addRow(u"凭证日期"_s, m_date, typeAndDate);
    rows->addWrappedRow(u"备注"_s, withCount(m_note), m_note);
    m_note->setTabChangesFocus(true);
}

QWidget* VoucherFields::withCount(QPlainTextEdit* note)
{
    auto* wrapper = new QWidget(note->parentWidget());
    auto* column = new QVBoxLayout(wrapper);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    auto* count = new TextCount(VoucherRules::longestNote, wrapper);
    column->addWidget(note);
    column->addWidget(count);
    // Whoever is short of room takes it from something else.
    wrapper->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(note, &QPlainTextEdit::textChanged, count,
        [count, note] { count->setCounted(note->toPlainText()); });
    return wrapper;
}

void VoucherFields::show(const VoucherDescription& description)
{
    m_name->setText(description.name);
    setChoice<VoucherType>(m_type, description.voucherType);
    m_date->setDate(description.voucherDate);
    m_note->setPlainText(description.note);
}

VoucherDescription VoucherFields::edited() const
{
    return { .name = TextRules::oneLine(m_name->text()),
        .voucherType = choiceOf<VoucherType>(m_type).value_or(VoucherType::Other),
        .voucherDate = m_date->date(),
        .note = TextRules::asStored(m_note->toPlainText()) };
}

void VoucherFields::focus(Field field)
{
    switch (field) {
    case Field::Files:
        break;
    case Field::Name:
        m_name->setFocus();
        m_name->selectAll();
        break;
    case Field::Date:
        m_date->setFocus();
        m_date->selectAll();
        break;
    case Field::Note:
        m_note->setFocus();
        break;
    }
}
