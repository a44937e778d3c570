#pragma once

#include "db/DatabaseManager.h"
#include "db/ProfileDao.h"
#include "support/TestLedger.h"

#include <functional>

/// The database as it stands after a first run, changed further and closed again; false when
/// that fails.
inline bool prepareFamiliarOwner(const std::function<bool(ProfileDao&)>& change = {})
{
    if (!DatabaseManager::instance().open())
        return false;
    ProfileDao profiles;
    const bool stored = TestLedger::storeCompany()
        && profiles.confirmDisclaimer(QStringLiteral("DISCLAIMER_V1.0"))
        && (!change || change(profiles));
    DatabaseManager::instance().close();
    return stored;
}
