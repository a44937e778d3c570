#pragma once

#include "db/CompanyProfile.h"
#include "services/NoticeLevel.h"

#include <QDate>
#include <QList>
#include <QString>

/// The warnings that stand above everything else on the dashboard.
namespace DashboardBanners {

enum class Kind {
    SelfCheckFailed,
    UnreadableData,
    ProfileIncomplete,
    NeverBackedUp,
    BackupAgeUnknown,
    BackupTooOld
};

/// What the banner's button leads to.
enum class Target { SelfCheck, Profile, Backup };

struct Notice {
    Kind kind = Kind::ProfileIncomplete;
    NoticeLevel level = NoticeLevel::Warning;
    QString text; // Chinese, plain
    Target target = Target::Profile;
};

struct Facts {
    QDate today;
    CompanyProfile profile; // names and the time of the last backup
    bool selfCheckFailed = false;
    bool isIncomplete = false; // some of the dashboard's figures could not be read
};

/// The warnings that the facts call for, the gravest first. A backup counts as old after 30 days;
/// a time of the last backup that cannot be read counts as none, and one after today as a backup
/// of unknown age.
[[nodiscard]] QList<Notice> noticesOf(const Facts& facts);

} // namespace DashboardBanners
