#pragma once

#include "db/CompanyProfile.h"
#include "dialogs/FormDialog.h"

class ProfileForm;
class QLabel;
class QPushButton;
class QStackedWidget;
class ThresholdForm;

/// The first run: what the program does and where the data lie, then company and owner, then the
/// account and the thresholds. Accepted only after everything was saved at once.
class ProfileWizardDialog final : public FormDialog {
    Q_OBJECT

public:
    /// `profile` as it was read from the database; the wizard never starts from defaults.
    explicit ProfileWizardDialog(const CompanyProfile& profile, QWidget* parent = nullptr);

protected:
    bool hasUnsavedInput() const override;

private:
    QWidget* buildWelcome();
    QWidget* buildCompany();
    QWidget* buildAccount();
    void goTo(int step);
    void onNext();
    /// Shows the box and the field when one of the steps up to this one keeps the profile from
    /// being saved; false when none does.
    bool showProblem(int upTo);
    void save();
    CompanyProfile edited() const;

    CompanyProfile m_profile;
    ProfileForm* m_form = nullptr;
    ThresholdForm* m_thresholds = nullptr;
    QLabel* m_progress = nullptr;
    QStackedWidget* m_steps = nullptr;
    QPushButton* m_back = nullptr;
    QPushButton* m_next = nullptr;
};
