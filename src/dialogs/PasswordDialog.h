#pragma once

#include "dialogs/FormDialog.h"
#include "services/Password.h"

class QLineEdit;

/// Sets, changes or turns off the start-up password; the current one is asked for where there is
/// one. Accepted only after the change was stored.
class PasswordDialog final : public FormDialog {
    Q_OBJECT

public:
    enum class Action { Set, Change, TurnOff };

    explicit PasswordDialog(Action action, QWidget* parent = nullptr);

protected:
    bool hasUnsavedInput() const override;

private:
    void buildForm();
    void onSave();
    void warn(const FormProblem<Password::Field>& problem);
    bool currentPasswordFits() const;
    bool store();

    const Action m_action;
    QLineEdit* m_current = nullptr; // not when a password is set for the first time
    QLineEdit* m_new = nullptr; // not when it is turned off
    QLineEdit* m_repeated = nullptr;
};
