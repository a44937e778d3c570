#include "services/figures/DashboardBanners.h"

#include "core/TextRules.h"
#include "services/ProfileRules.h"

#include <QDate>
#include <QString>

using namespace Qt::StringLiterals;

namespace DashboardBanners {

namespace {

constexpr qint64 backupDays = 30;

void addBackupNotice(QList<Notice>& notices, const Facts& facts)
{
    const QDate last = TextRules::dateFromText(facts.profile.lastBackupAt.left(10));
    if (!last.isValid()) {
        notices += { Kind::NeverBackedUp, NoticeLevel::Warning,
            u"还没有备份过数据。电脑损坏或丢失时记录无法找回，请尽快备份到另一个磁盘或 U 盘。"_s,
            Target::Backup };
        return;
    }
    // A clock was wrong then or is wrong now. The backup was made, but its age is unknown, and
    // silence would last until the day has passed.
    if (last > facts.today) {
        notices += { Kind::BackupAgeUnknown, NoticeLevel::Warning,
            u"上次备份的日期（%1）晚于今天，无法判断备份是否过旧。请核对电脑日期，并重新备份。"_s
                .arg(TextRules::dateText(last)),
            Target::Backup };
        return;
    }
    const qint64 days = last.daysTo(facts.today);
    if (days >= backupDays)
        notices += { Kind::BackupTooOld, NoticeLevel::Warning,
            u"距上次备份已有 %1 天（%2），请重新备份。"_s.arg(
                QString::number(days), TextRules::dateText(last)),
            Target::Backup };
}

} // namespace

QList<Notice> noticesOf(const Facts& facts)
{
    QList<Notice> notices;
    if (facts.selfCheckFailed)
        notices += { Kind::SelfCheckFailed, NoticeLevel::Danger,
            u"启动自检发现问题，数据或程序可能不完整。请先备份，再查看自检报告。"_s,
            Target::SelfCheck };
    if (facts.isIncomplete)
        notices += { Kind::UnreadableData, NoticeLevel::Danger,
            u"部分数据没有读出来，本页的数字和待办可能不全。请重新启动程序，仍有问题时查看日志。"_s,
            Target::SelfCheck };
    if (!ProfileRules::isComplete(facts.profile))
        notices += { Kind::ProfileIncomplete, NoticeLevel::Warning,
            u"公司档案不完整：请填写公司名称和股东姓名，否则无法生成文书。"_s, Target::Profile };
    addBackupNotice(notices, facts);
    return notices;
}

} // namespace DashboardBanners
