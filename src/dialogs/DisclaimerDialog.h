#pragma once

#include "dialogs/FormDialog.h"

class QCheckBox;
class QPushButton;
class QTextBrowser;

/// What the program is and is not, in the user's words. Before the first use it has to be read to
/// the end and agreed to; later it can be read again.
class DisclaimerDialog final : public FormDialog {
    Q_OBJECT

public:
    enum class Purpose { Confirm, ReadAgain };

    explicit DisclaimerDialog(Purpose purpose, QWidget* parent = nullptr);

private:
    void buildConfirmation();
    void noticeReadToEnd();

    QTextBrowser* m_text = nullptr;
    QCheckBox* m_agreed = nullptr;
    QPushButton* m_accept = nullptr;
};
