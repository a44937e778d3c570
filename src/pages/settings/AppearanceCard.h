#pragma once

#include "pages/settings/SettingsCard.h"
#include "theme/ThemeTokens.h"

class QButtonGroup;

/// Light or dark, at once.
class AppearanceCard final : public SettingsCard {
    Q_OBJECT

public:
    explicit AppearanceCard(QWidget* parent = nullptr);

    void showProfile(const CompanyProfile& profile) override;

private:
    void onChosen(ThemeMode mode);

    QButtonGroup* m_modes;
};
