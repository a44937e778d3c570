#pragma once

#include "widgets/ButtonRole.h"

#include <QDialog>

class QHBoxLayout;
class QPushButton;
class QVBoxLayout;

/// Frame of the modal editors: a body, and a line of buttons under it. However the user leaves it
/// (the button, Escape, the close button of the window), changed input is thrown away only after
/// a question.
class FormDialog : public QDialog {
    Q_OBJECT

public:
    explicit FormDialog(const QString& title, QWidget* parent = nullptr);

    /// Asks first when the input was changed.
    void reject() override;

protected:
    QVBoxLayout* body() const { return m_body; }

    /// The button that Enter presses unless another one has the focus, rightmost. Does not close
    /// the dialog by itself.
    QPushButton* addPrimaryButton(const QString& text, ButtonRole role = ButtonRole::Primary);
    /// The button that leaves the dialog, left of the primary one.
    QPushButton* addRejectButton(const QString& text);
    /// A further button at the left end.
    QPushButton* addSideButton(const QString& text);

    /// Whether leaving now would lose input.
    virtual bool hasUnsavedInput() const;
    /// What is asked before the input is thrown away.
    virtual QString discardQuestion() const;

private:
    QVBoxLayout* m_body = nullptr;
    QHBoxLayout* m_sideButtons = nullptr;
    QHBoxLayout* m_buttons = nullptr;
};
