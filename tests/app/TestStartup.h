#pragma once

#include "support/TestCase.h"

class TestStartup final : public TestCase {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void aNewOwnerPassesAllGates();
    void decliningAGateEndsQuietly_data();
    void decliningAGateEndsQuietly();
    void anOlderDisclaimerIsShownAgain();
    void aCompanyNameOfBlanksOpensTheWizard();
    void thePasswordIsAskedFor();
    void theStoredThemeIsApplied();
    void anUnreadableProfileIsAFailure();
    void aDisclaimerThatCannotBeStoredIsAFailure();
    void aDirectoryThatCannotBeCreatedIsAFailure();
    void theLockEndsWithTheProgram();
};
