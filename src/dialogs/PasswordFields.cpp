#include "dialogs/PasswordFields.h"

#include "widgets/FormRows.h"

#include <QCheckBox>
#include <QLineEdit>

using namespace Qt::StringLiterals;

PasswordFields::PasswordFields(QWidget* parent)
    : QObject(parent)
    , m_reveal(new QCheckBox(u"显示密码"_s, parent))
{
    connect(m_reveal, &QCheckBox::toggled, this, &PasswordFields::reveal);
}

QLineEdit* PasswordFields::addRow(FormRows* rows, const QString& label, const QString& objectName)
{
    auto* edit = new QLineEdit(m_reveal->parentWidget());
    edit->setObjectName(objectName);
    edit->setEchoMode(QLineEdit::Password);
    rows->addRow(label, edit);
    m_edits += edit;
    return edit;
}

void PasswordFields::addRevealRow(FormRows* rows)
{
    rows->QFormLayout::addRow(QString(), m_reveal);
    // Created first, reached last.
    QWidget::setTabOrder(m_edits.constLast(), m_reveal);
}

void PasswordFields::reveal(bool visible)
{
    for (QLineEdit* edit : std::as_const(m_edits))
        edit->setEchoMode(visible ? QLineEdit::Normal : QLineEdit::Password);
}
