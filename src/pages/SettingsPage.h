#pragma once

#include "db/CompanyProfile.h"
#include "dialogs/PasswordDialog.h"
#include "pages/IPage.h"

#include <QMap>

class Card;
class QButtonGroup;
class QGridLayout;
class QLabel;
class QPushButton;

/// What the owner can set: company profile, appearance, start-up password; and what the program
/// is.
class SettingsPage final : public IPage {
    Q_OBJECT

public:
    explicit SettingsPage(QWidget* parent = nullptr);

    void refresh() override;

private:
    Card* buildProfileCard();
    Card* buildAppearanceCard();
    Card* buildPasswordCard();
    Card* buildAboutCard();

    void showProfile();
    void showPassword();
    void onEditProfile();
    void onThemeChosen(int mode);
    void onPassword(PasswordDialog::Action action, const QString& done);

    CompanyProfile m_profile;
    QList<QLabel*> m_profileValues;
    QButtonGroup* m_themes = nullptr;
    QLabel* m_passwordState = nullptr;
    QMap<PasswordDialog::Action, QPushButton*> m_passwordButtons;
};
