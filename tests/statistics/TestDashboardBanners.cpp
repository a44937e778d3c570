#include "services/figures/DashboardBanners.h"
#include "support/TestCase.h"

using namespace Qt::StringLiterals;
using DashboardBanners::Facts;
using DashboardBanners::Kind;
using DashboardBanners::Notice;

namespace {

Facts goodFacts()
{
    Facts facts;
    facts.today = QDate(2025, 3, 31);
    facts.profile.companyName = u"杭州山岚设计有限公司"_s;
    facts.profile.shareholderName = u"林岚"_s;
    facts.profile.lastBackupAt = u"2025-03-30 09:00:00"_s;
    return facts;
}

QList<Kind> kindsOf(const Facts& facts)
{
    QList<Kind> kinds;
    for (const Notice& notice : DashboardBanners::noticesOf(facts))
        kinds += notice.kind;
    return kinds;
}

} // namespace

class TestDashboardBanners final : public TestCase {
    Q_OBJECT

private slots:
    void backupsGrowOld_data()
    {
        addColumns<QString, QList<Kind>, QString>("last", "kinds", "days");
        using Kinds = QList<Kind>;
        addCase("today", u"2025-03-31 23:59:59"_s, Kinds {}, QString());
        addCase("29 days", u"2025-03-02 00:00:00"_s, Kinds {}, QString());
        addCase("30 days", u"2025-03-01 23:59:59"_s, Kinds { Kind::BackupTooOld },
            u"30 天（2025-03-01）"_s);
        addCase("years", u"2023-03-31 10:00:00"_s, Kinds { Kind::BackupTooOld },
            u"731 天（2023-03-31）"_s);
        const Kinds ageUnknown { Kind::BackupAgeUnknown };
        addCase(
            "a clock set back", u"2025-05-01 10:00:00"_s, ageUnknown, u"（2025-05-01）晚于今天"_s);
        addCase("tomorrow", u"2025-04-01 00:00:00"_s, ageUnknown, u"（2025-04-01）晚于今天"_s);
        addCase("never", QString(), Kinds { Kind::NeverBackedUp }, QString());
        addCase("unreadable", u"yesterday"_s, Kinds { Kind::NeverBackedUp }, QString());
    }

    void backupsGrowOld()
    {
        QFETCH(QString, last);
        QFETCH(QList<Kind>, kinds);
        QFETCH(QString, days);
        Facts facts = goodFacts();
        facts.profile.lastBackupAt = last;
        const auto notices = DashboardBanners::noticesOf(facts);
        QCOMPARE(kindsOf(facts), kinds);
        if (notices.isEmpty())
            return;
        QVERIFY2(notices.first().text.contains(days), qPrintable(notices.first().text));
        QCOMPARE(notices.first().target, DashboardBanners::Target::Backup);
    }

    void theGravestComesFirst()
    {
        Facts facts;
        facts.today = QDate(2025, 3, 31);
        facts.profile.companyName = u"甲公司"_s; // of an owner without a name
        facts.selfCheckFailed = true;
        facts.isIncomplete = true;
        QCOMPARE(kindsOf(facts),
            (QList<Kind> { Kind::SelfCheckFailed, Kind::UnreadableData, Kind::ProfileIncomplete,
                Kind::NeverBackedUp }));
        NoticeLevel last = NoticeLevel::Danger;
        for (const Notice& notice : DashboardBanners::noticesOf(facts)) {
            QVERIFY(notice.level <= last);
            last = notice.level;
        }
    }
};

static const RegisteredTest<TestDashboardBanners> registered;

#include "TestDashboardBanners.moc"
