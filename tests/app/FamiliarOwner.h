#pragma once

#include "db/DatabaseManager.h"
#include "db/ProfileDao.h"

#include <functional>

/// The database as it stands after a first run, changed further and closed again; false when
/// that fails.
inline bool prepareFamiliarOwner(const std::function<bool(ProfileDao&)>& change = {})
{
    if (!DatabaseManager::instance().open())
        return false;
    ProfileDao profiles;
    CompanyProfile profile = profiles.load();
    profile.companyName = QStringLiteral("杭州山岚设计有限公司");
    profile.shareholderName = QStringLiteral("林岚");
    const bool stored = profiles.save(profile)
        && profiles.confirmDisclaimer(QStringLiteral("DISCLAIMER_V1.0"))
        && (!change || change(profiles));
    DatabaseManager::instance().close();
    return stored;
}
