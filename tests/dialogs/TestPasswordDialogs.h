#pragma once

#include "support/DatabaseTestCase.h"

class TestPasswordDialogs final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void onlyTheRightPasswordOpens();
    void triesHaveToWaitAfterFiveFailures();
    void waitingCannotBeBypassedByEnter();
    void setsChangesAndTurnsOff();
    void wrongInputKeepsTheDialogAndThePassword_data();
    void wrongInputKeepsTheDialogAndThePassword();
    void aPasswordIsNotSetOverAnother();
    void aFailedSaveKeepsTheInput();
    void passwordsAreHiddenUntilAskedFor();
};
