#pragma once

#include "dialogs/FormDialog.h"
#include "services/Password.h"

#include <QMap>

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
    using Field = Password::Field;

    void buildForm();
    void onSave();
    void warn(const FormProblem<Password::Field>& problem);
    /// Whether whoever sits here may change the password; shows why not.
    bool ownerIsConfirmed();
    bool store();

    const Action m_action;
    // Without the current password when one is set for the first time, without the new one when it
    // is turned off.
    QMap<Field, QLineEdit*> m_fields;
};
