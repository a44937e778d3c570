#include "pages/settings/AppearanceCard.h"

#include "db/ProfileDao.h"
#include "theme/Theme.h"
#include "widgets/MessageBox.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

AppearanceCard::AppearanceCard(QWidget* parent)
    : SettingsCard(u"外观"_s, parent)
    , m_modes(new QButtonGroup(this))
{
    setHint(u"选择后立即生效。"_s);
    QHBoxLayout* line = addButtonLine();
    line->setSpacing(24);
    for (const ThemeMode mode : allValues<ThemeMode>()) {
        auto* choice = new QRadioButton(labelOf(mode), this);
        m_modes->addButton(choice, static_cast<int>(mode));
        line->addWidget(choice);
        // Assistive technology toggles without a click.
        connect(choice, &QRadioButton::toggled, this, [this, mode](bool chosen) {
            if (chosen)
                onChosen(mode);
        });
    }
    line->addStretch();
}

void AppearanceCard::showProfile(const CompanyProfile& profile)
{
    QAbstractButton* current
        = m_modes->button(static_cast<int>(fromCode<ThemeMode>(profile.themeMode)));
    const QSignalBlocker silent(current);
    current->setChecked(true);
}

void AppearanceCard::onChosen(ThemeMode mode)
{
    if (mode == Theme::instance().mode())
        return;
    ProfileDao profiles;
    if (!profiles.setThemeMode(codeOf(mode))) {
        MessageBox::warn(this, u"保存失败"_s, u"外观设置无法保存：%1"_s.arg(profiles.lastError()));
        emit profileChanged();
        return;
    }
    Theme::instance().apply(mode);
}
