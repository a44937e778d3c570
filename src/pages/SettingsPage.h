#pragma once

#include "db/CompanyProfile.h"
#include "dialogs/PasswordDialog.h"
#include "pages/IPage.h"

#include <QMap>

#include <optional>

class Banner;
class Card;
class QButtonGroup;
class QLabel;
class QPushButton;
class ThresholdForm;

/// What the owner can set: company profile, thresholds of the risk rules, appearance, start-up
/// password; and what the program is.
class SettingsPage final : public IPage {
    Q_OBJECT

public:
    explicit SettingsPage(QWidget* parent = nullptr);

    void refresh() override;

private:
    Card* buildProfileCard();
    Card* buildThresholdCard();
    Card* buildAppearanceCard();
    Card* buildPasswordCard();
    Card* buildAboutCard();

    /// The stored profile; the page says so when it cannot be read.
    std::optional<CompanyProfile> readProfile();
    void showProfile();
    void showPassword();
    void onEditProfile();
    void onSaveThresholds();
    void onThemeChosen(int mode);
    void onPassword(PasswordDialog::Action action, const QString& done);

    CompanyProfile m_profile;
    Banner* m_unreadable = nullptr;
    QWidget* m_stored = nullptr; // everything that rests on the stored profile
    ThresholdForm* m_thresholds = nullptr;
    QList<QLabel*> m_profileValues;
    QButtonGroup* m_themes = nullptr;
    QLabel* m_passwordState = nullptr;
    QMap<PasswordDialog::Action, QPushButton*> m_passwordButtons;
};
