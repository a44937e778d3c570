#pragma once

#include "services/Password.h"

#include <QDeadlineTimer>
#include <QDialog>
#include <QTimer>

#include <functional>

class QLabel;
class QLineEdit;
class QPushButton;

/// Asks for the start-up password. Accepted only by the right one; after five wrong ones every
/// further try has to wait, longer each time.
class LoginDialog final : public QDialog {
    Q_OBJECT

public:
    /// Seconds to wait after so many failures.
    using WaitRule = std::function<int(int)>;

    explicit LoginDialog(const Password::Secret& secret,
        const WaitRule& waitAfter = &Password::waitSecondsAfter, QWidget* parent = nullptr);

private:
    void buildForm();
    QLayout* buildButtons();
    void onEnter();
    void refuse();
    void updateWait();

    const Password::Secret m_secret;
    const WaitRule m_waitAfter;
    int m_failures = 0;
    QDeadlineTimer m_waitUntil;
    QTimer m_tick;
    QLineEdit* m_password = nullptr;
    QLabel* m_message = nullptr;
    QPushButton* m_enter = nullptr;
};
