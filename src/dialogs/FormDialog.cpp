#include "dialogs/FormDialog.h"

#include "widgets/MessageBox.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

FormDialog::FormDialog(const QString& title, QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(title);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    m_body = new QVBoxLayout;
    m_body->setContentsMargins(24, 20, 24, 20);
    m_body->setSpacing(12);
    layout->addLayout(m_body, 1);

    auto* footer = new QFrame(this);
    footer->setObjectName(u"DialogFooter"_s);
    auto* line = new QHBoxLayout(footer);
    line->setContentsMargins(24, 12, 24, 12);
    line->setSpacing(8);
    m_sideButtons = new QHBoxLayout;
    m_buttons = new QHBoxLayout;
    m_buttons->setDirection(QBoxLayout::RightToLeft);
    line->addLayout(m_sideButtons);
    line->addStretch();
    line->addLayout(m_buttons);
    layout->addWidget(footer);
}

void FormDialog::reject()
{
    if (hasUnsavedInput()
        && !MessageBox::ask(this, u"放弃修改"_s, discardQuestion(), u"放弃修改"_s, u"继续填写"_s,
            ButtonRole::Danger))
        return;
    QDialog::reject();
}

QPushButton* FormDialog::addPrimaryButton(const QString& text, ButtonRole role)
{
    QPushButton* button = makeButton(text, role, this);
    button->setDefault(true);
    m_buttons->insertWidget(0, button);
    return button;
}

QPushButton* FormDialog::addRejectButton(const QString& text)
{
    QPushButton* button = makeButton(text, ButtonRole::Default, this);
    m_buttons->addWidget(button);
    connect(button, &QPushButton::clicked, this, &QDialog::reject);
    return button;
}

QPushButton* FormDialog::addSideButton(const QString& text)
{
    QPushButton* button = makeButton(text, ButtonRole::Default, this);
    m_sideButtons->addWidget(button);
    return button;
}

bool FormDialog::hasUnsavedInput() const
{
    return false;
}

QString FormDialog::discardQuestion() const
{
    return u"填写的内容尚未保存，确定放弃吗？"_s;
}
