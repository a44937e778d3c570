#include "pages/settings/SettingsCard.h"

#include "db/ProfileDao.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

void SettingsCard::showProfile(const CompanyProfile& profile)
{
    Q_UNUSED(profile)
}

void SettingsCard::refresh() { }

void SettingsCard::focusFirstControl()
{
    for (QWidget* control = nextInFocusChain(); control != this && isAncestorOf(control);
         control = control->nextInFocusChain()) {
        if ((control->focusPolicy() & Qt::TabFocus) && control->isEnabled()
            && control->isVisible()) {
            control->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
}

QLabel* SettingsCard::makeText(const QString& text)
{
    auto* label = new QLabel(text, this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QLabel* SettingsCard::makeValue()
{
    QLabel* label = makeText();
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

void SettingsCard::setValue(QLabel* value, const QString& subject, const QString& text)
{
    value->setText(text);
    value->setAccessibleName(u"%1：%2"_s.arg(subject, text));
}

QHBoxLayout* SettingsCard::addButtonLine()
{
    auto* line = new QHBoxLayout;
    line->setSpacing(8);
    body()->addLayout(line);
    return line;
}

std::optional<CompanyProfile> SettingsCard::readProfile()
{
    std::optional<CompanyProfile> profile = ProfileDao().find();
    if (!profile)
        emit profileChanged();
    return profile;
}
