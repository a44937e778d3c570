#pragma once

#include "db/CompanyProfile.h"
#include "pages/settings/SettingsCard.h"

#include <optional>

class ThresholdForm;

/// From when on the risk rules speak up.
class ThresholdCard final : public SettingsCard {
    Q_OBJECT

public:
    explicit ThresholdCard(QWidget* parent = nullptr);

    void showProfile(const CompanyProfile& profile) override;

private:
    void onSave();

    ThresholdForm* m_form;
    std::optional<CompanyProfile> m_shown; // as it was stored when the fields last followed it
};
