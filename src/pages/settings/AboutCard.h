#pragma once

#include "pages/settings/SettingsCard.h"

/// What the program is, with the disclaimer to read again.
class AboutCard final : public SettingsCard {
    Q_OBJECT

public:
    explicit AboutCard(QWidget* parent = nullptr);
};
