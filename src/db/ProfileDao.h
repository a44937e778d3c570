#pragma once

#include "db/BaseDao.h"
#include "db/CompanyProfile.h"

#include <QDateTime>

/// The single row of table `company_profile`. Every change fails when the row is missing.
class ProfileDao final : public BaseDao {
public:
    /// The stored profile; nothing when it could not be read. For decisions that must not rest on
    /// a default, such as whether a password is asked for.
    std::optional<CompanyProfile> find();
    /// The stored profile, or the defaults when it could not be read.
    CompanyProfile load();

    /// Writes company, owner and thresholds; password, disclaimer, backup and theme each have a
    /// function of their own.
    [[nodiscard]] bool save(const CompanyProfile& profile);
    [[nodiscard]] bool confirmDisclaimer(const QString& version);
    [[nodiscard]] bool setPassword(bool enabled, const QString& hash, const QString& salt);
    [[nodiscard]] bool setLastBackupAt(const QDateTime& time);
    /// "light" or "dark".
    [[nodiscard]] bool setThemeMode(const QString& mode);

private:
    bool updateRow(const QString& sql, const Bindings& bindings);
};
