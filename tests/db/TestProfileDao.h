#pragma once

#include "support/DatabaseTestCase.h"

class TestProfileDao final : public DatabaseTestCase {
    Q_OBJECT

private slots:
    void aNewProfileCarriesTheDefaults();
    void everyFieldIsStored();
    void savingLeavesTheOtherSettingsAlone();
    void theFlagOfThePasswordIsExact();
    void aMissingRowIsNotSaved();
    void anUnreadableProfileIsToldFromTheDefaults();
};
