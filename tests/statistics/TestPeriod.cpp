#include "core/TextRules.h"
#include "services/figures/Period.h"
#include "support/TestCase.h"

using namespace Qt::StringLiterals;

namespace {

QDate day(const QString& text)
{
    return TextRules::dateFromText(text);
}

QString textOf(const DateRange& range)
{
    return TextRules::dateText(range.from) + u'~' + TextRules::dateText(range.to);
}

} // namespace

class TestPeriod final : public TestCase {
    Q_OBJECT

private slots:
    void periodsAreWholeCalendarUnits()
    {
        using enum Period;
        const auto at = [](Period period, const QString& today) {
            return textOf(rangeOf(period, day(today)));
        };
        QCOMPARE(at(ThisMonth, u"2025-11-21"_s), u"2025-11-01~2025-11-30"_s);
        QCOMPARE(at(ThisMonth, u"2024-02-29"_s), u"2024-02-01~2024-02-29"_s);
        QCOMPARE(at(LastMonth, u"2025-03-31"_s), u"2025-02-01~2025-02-28"_s);
        QCOMPARE(at(LastMonth, u"2025-01-01"_s), u"2024-12-01~2024-12-31"_s);
        QCOMPARE(at(ThisQuarter, u"2025-03-31"_s), u"2025-01-01~2025-03-31"_s);
        QCOMPARE(at(ThisQuarter, u"2025-04-01"_s), u"2025-04-01~2025-06-30"_s);
        QCOMPARE(at(ThisQuarter, u"2025-12-31"_s), u"2025-10-01~2025-12-31"_s);
        QCOMPARE(at(ThisYear, u"2025-11-21"_s), u"2025-01-01~2025-12-31"_s);
        QCOMPARE(at(LastYear, u"2025-01-01"_s), u"2024-01-01~2024-12-31"_s);
        QCOMPARE(at(All, u"2025-11-21"_s), u"~"_s);
    }

    void rangesAreComparedFairly_data()
    {
        addColumns<QString, QString, QString, QString>("from", "to", "today", "ranges");
        const auto row
            = [](const char* name, const QString& from, const QString& to, const QString& today,
                  const QString& ranges) { addCase(name, from, to, today, ranges); };
        row("a month that is over", u"2025-03-01"_s, u"2025-03-31"_s, u"2025-04-01"_s,
            u"2025-03-01~2025-03-31 2025-02-01~2025-02-28 2024-03-01~2024-03-31"_s);
        row("a running month", u"2025-11-01"_s, u"2025-11-30"_s, u"2025-11-21"_s,
            u"2025-11-01~2025-11-21 2025-10-01~2025-10-21 2024-11-01~2024-11-21"_s);
        row("its first day", u"2025-11-01"_s, u"2025-11-30"_s, u"2025-11-01"_s,
            u"2025-11-01~2025-11-01 2025-10-01~2025-10-01 2024-11-01~2024-11-01"_s);
        row("its last day: whole months", u"2025-02-01"_s, u"2025-02-28"_s, u"2025-02-28"_s,
            u"2025-02-01~2025-02-28 2025-01-01~2025-01-31 2024-02-01~2024-02-29"_s);
        row("a day that the month before lacks", u"2025-03-01"_s, u"2025-03-31"_s, u"2025-03-30"_s,
            u"2025-03-01~2025-03-30 2025-02-01~2025-02-28 2024-03-01~2024-03-30"_s);
        row("a running quarter", u"2025-10-01"_s, u"2025-12-31"_s, u"2025-11-21"_s,
            u"2025-10-01~2025-11-21 2025-07-01~2025-08-21 2024-10-01~2024-11-21"_s);
        row("a quarter at a month's end", u"2025-01-01"_s, u"2025-03-31"_s, u"2025-02-28"_s,
            u"2025-01-01~2025-02-28 2024-10-01~2024-11-30 2024-01-01~2024-02-29"_s);
        row("a running year", u"2025-01-01"_s, u"2025-12-31"_s, u"2025-11-21"_s,
            u"2025-01-01~2025-11-21 2024-01-01~2024-11-21 2024-01-01~2024-11-21"_s);
        row("a year that is over", u"2024-01-01"_s, u"2024-12-31"_s, u"2025-11-21"_s,
            u"2024-01-01~2024-12-31 2023-01-01~2023-12-31 2023-01-01~2023-12-31"_s);
        row("any days", u"2025-03-10"_s, u"2025-03-19"_s, u"2025-11-21"_s,
            u"2025-03-10~2025-03-19 2025-02-28~2025-03-09 2024-03-10~2024-03-19"_s);
        row("any days, running", u"2025-11-17"_s, u"2025-11-25"_s, u"2025-11-21"_s,
            u"2025-11-17~2025-11-21 2025-11-12~2025-11-16 2024-11-17~2024-11-21"_s);
        row("one day", u"2024-02-29"_s, u"2024-02-29"_s, u"2025-11-21"_s,
            u"2024-02-29~2024-02-29 2024-02-28~2024-02-28 2023-02-28~2023-02-28"_s);
        row("days to come", u"2025-12-01"_s, u"2025-12-31"_s, u"2025-11-21"_s,
            u"2025-12-01~2025-12-31 2025-11-01~2025-11-30 2024-12-01~2024-12-31"_s);
    }

    void rangesAreComparedFairly()
    {
        QFETCH(QString, from);
        QFETCH(QString, to);
        QFETCH(QString, today);
        const auto compared = comparedRanges({ day(from), day(to) }, day(today));
        QVERIFY(compared);
        QTEST(textOf(compared->current) + u' ' + textOf(compared->previous) + u' '
                + textOf(compared->yearAgo),
            "ranges");
    }

    void openRangesAreNotCompared()
    {
        const QDate today(2025, 11, 21);
        const QDate day(2025, 1, 1);
        QVERIFY(!comparedRanges({}, today));
        QVERIFY(!comparedRanges({ day, {} }, today));
        QVERIFY(!comparedRanges({ {}, day }, today));
        QVERIFY2(!comparedRanges({ day.addDays(1), day }, today), "the wrong way round");
    }
};

static const RegisteredTest<TestPeriod> registered;

#include "TestPeriod.moc"
