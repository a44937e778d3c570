#pragma once

#include "support/DatabaseTestCase.h"

class TestSettingsPage final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void cleanup();
    void theProfileIsShownAndEdited();
    void theThemeChangesAtOnceAndIsStored();
    void aThemeThatCannotBeStoredIsNotApplied();
    void thePasswordButtonsFollowItsState();
    void newThresholdsAreAppliedToTheLedger();
    void defaultThresholdsCanBeRestored();
    void anUnreadableProfileOffersNothingToChange();
};
