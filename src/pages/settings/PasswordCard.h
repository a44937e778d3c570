#pragma once

#include "dialogs/PasswordDialog.h"
#include "pages/settings/SettingsCard.h"

#include <QMap>

class QPushButton;

/// The start-up password: set, change, turn off.
class PasswordCard final : public SettingsCard {
    Q_OBJECT

public:
    explicit PasswordCard(QWidget* parent = nullptr);

    void showProfile(const CompanyProfile& profile) override;

private:
    void onAction(PasswordDialog::Action action, const QString& done);

    QLabel* m_state;
    QMap<PasswordDialog::Action, QPushButton*> m_buttons;
};
