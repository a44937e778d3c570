#include "widgets/FieldLabel.h"

#include "theme/Theme.h"

#include <QComboBox>
#include <QLineEdit>

using namespace Qt::StringLiterals;

FieldLabel::FieldLabel(const QString& text, Required required, QWidget* parent)
    : QLabel(parent)
    , m_plainText(text)
    , m_required(required)
{
    setTextFormat(Qt::RichText);
    setAccessibleName(m_plainText);
    connect(&Theme::instance(), &Theme::changed, this, &FieldLabel::render);
    render();
}

void FieldLabel::nameField(QWidget* field)
{
    setBuddy(field);
    // A combo's own name is its present text on some platforms; there the buddy names it, and an
    // editable one is read through its line edit.
    field->setAccessibleName(m_plainText);
    if (auto* combo = qobject_cast<QComboBox*>(field); combo && combo->lineEdit())
        combo->lineEdit()->setAccessibleName(m_plainText);
}

void FieldLabel::render()
{
    const QString text = m_plainText.toHtmlEscaped();
    const QString star = Theme::instance().hex(Token::DangerText);
    if (m_required == Required::Yes)
        setText(u"<span style='color:%1'>*</span> %2"_s.arg(star, text));
    else if (m_required == Required::Trailing)
        setText(u"%2 <span style='color:%1'>*</span>"_s.arg(star, text));
    else
        setText(text);
}
