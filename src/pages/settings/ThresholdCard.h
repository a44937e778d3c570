#pragma once

#include "pages/settings/SettingsCard.h"

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
};
