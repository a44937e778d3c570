#pragma once

#include "db/CompanyProfile.h"
#include "dialogs/FormDialog.h"

class ProfileForm;

/// Edits the company profile. Accepted only after it was saved.
class ProfileDialog final : public FormDialog {
    Q_OBJECT

public:
    /// `profile` as it was read from the database; the dialog never starts from defaults.
    explicit ProfileDialog(const CompanyProfile& profile, QWidget* parent = nullptr);

protected:
    bool hasUnsavedInput() const override;

private:
    void buildForm();
    void onSave();

    CompanyProfile m_profile;
    ProfileForm* m_form = nullptr;
};
