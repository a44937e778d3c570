#include "support/Hands.h"
#include "support/TestCase.h"
#include "widgets/charts/BarChart.h"
#include "widgets/charts/ShareBar.h"

#include <QSignalSpy>

#include <limits>

using namespace Qt::StringLiterals;
using namespace ChartScale;

class TestCharts final : public TestCase {
    Q_OBJECT

    static QList<BarChart::Item> months(int count, const Flow& flow)
    {
        return QList<BarChart::Item>(count, { u"2026年3月"_s, u"3月"_s, u"2026年"_s, flow });
    }

private slots:
    void ticksAreRoundNumbersAroundTheAmounts_data()
    {
        addColumns<qint64, qint64, QString>("lowest", "highest", "axis");
        const auto row = [](const char* name, qint64 lowest, qint64 highest, const char16_t* axis) {
            addCase(name, lowest, highest, QString::fromUtf16(axis));
        };
        row("nothing moved", 0, 0, u"0 元");
        row("a few fen", 0, 7, u"0.00 0.02 0.04 0.06 0.08 元");
        row("hundreds of yuan", 0, 73'000, u"0 200 400 600 800 元");
        row("ten thousands", 0, 12'345'600, u"0 5 10 15 万元");
        row("a loss", -2'000'000, 3'000'000, u"-2 -1 0 1 2 3 万元");
        row("only a loss", -900, 0, u"-10 -8 -6 -4 -2 0 元");
        row("hundreds of millions", 0, 35'000'000'000, u"0 1 2 3 4 亿元");
        row("more than a ledger holds", 0, 90'000'000'000'000'000,
            u"0 2,000,000 4,000,000 6,000,000 8,000,000 10,000,000 亿元");
        row("from end to end of the numbers", std::numeric_limits<qint64>::min(),
            std::numeric_limits<qint64>::max(),
            u"-1,000,000,000 -500,000,000 0 500,000,000 1,000,000,000 亿元");
    }

    void ticksAreRoundNumbersAroundTheAmounts()
    {
        QFETCH(qint64, lowest);
        QFETCH(qint64, highest);
        const Axis axis = axisFor(lowest, highest, 6);
        QStringList shown;
        for (const double tick : axis.ticks)
            shown += axis.label(tick);
        QTEST((shown << axis.unitText).join(u' '), "axis");
        QVERIFY(axis.ticks.first() <= static_cast<double>(lowest));
        QVERIFY(axis.ticks.size() == 1 || axis.ticks.last() >= static_cast<double>(highest));
    }

    void barsStandOnZeroAndAreNeverLost()
    {
        const QRectF plot(100, 50, 200, 100);
        const auto groups
            = groupsOf(plot, axisFor(-100, 100, 3), { { 100, 1, -100 }, { 0, 50, 0 } });
        QCOMPARE(groups.size(), 2);
        QCOMPARE(groups.at(0).slot, QRectF(100, 50, 100, 100));
        QCOMPARE(groups.at(0).in.top(), 50.0);
        QCOMPARE(groups.at(0).in.bottom(), 100.0); // the zero line
        QCOMPARE(groups.at(0).out.height(), 1.0); // too small for the scale, yet there
        QCOMPARE(groups.at(0).net.y(), 150.0);
        QCOMPARE(groups.at(1).in.height(), 0.0);
        QVERIFY(groups.at(1).out.left() >= groups.at(1).in.right());
        QVERIFY(groupsOf(plot, axisFor(0, 0, 3), {}).isEmpty());
        QCOMPARE(groupsOf(plot, axisFor(0, 0, 3), { {} }).first().in.height(), 0.0);
    }

    void partsFillTheWidthAndSmallOnesAreSeen_data()
    {
        addColumns<QList<qint64>, QList<double>>("values", "widths");
        using Values = QList<qint64>;
        using Widths = QList<double>;
        addCase("nothing", Values { 0, 0 }, Widths { 0, 0 });
        addCase("in proportion", Values { 1, 3 }, Widths { 25, 75 });
        addCase("one in a million", Values { 1, 999'999, 0 }, Widths { 6, 94, 0 });
        addCase("a part falls below when another is raised", Values { 1, 62, 937 },
            Widths { 6, 6, 88 });
    }

    void partsFillTheWidthAndSmallOnesAreSeen()
    {
        QFETCH(QList<qint64>, values);
        QTEST(shareWidths(values, 100, 6), "widths");
    }

    void labelsDoNotTouch_data()
    {
        addColumns<double, QList<int>>("labelWidth", "shown");
        addCase("all fit", 14.0, QList<int> { 0, 1, 2, 3, 4 });
        addCase("every second, counted from the last", 15.0, QList<int> { 0, 2, 4 });
        addCase("every third", 35.0, QList<int> { 1, 4 });
        addCase("only the last", 500.0, QList<int> { 4 });
    }

    void labelsDoNotTouch()
    {
        QFETCH(double, labelWidth);
        QTEST(fittingLabels({ 10, 30, 50, 70, 90 }, QList<double>(5, labelWidth), 6), "shown");
    }

    void theBoxStaysInsideTheChart()
    {
        const QRectF bounds(0, 0, 200, 100);
        QCOMPARE(besideItem({ 10, 0, 20, 100 }, { 80, 40 }, bounds), QRectF(38, 30, 80, 40));
        QCOMPARE(besideItem({ 150, 0, 20, 100 }, { 80, 40 }, bounds), QRectF(62, 30, 80, 40));
        QCOMPARE(besideItem({ 60, 0, 120, 100 }, { 80, 40 }, bounds), QRectF(92, 30, 80, 40));
        QVERIFY(bounds.contains(besideItem({ 60, 0, 90, 10 }, { 80, 40 }, bounds)));
    }

    void arrowKeysMarkAndEnterActivates()
    {
        BarChart chart(u"近 12 个月收支"_s);
        chart.resize(400, 280);
        QVERIFY(Hands::show(chart));
        chart.setItems(months(12, { 100, 50, 50 }));
        chart.setFocus();
        QSignalSpy activated(&chart, &ChartView::activated);
        QCOMPARE(chart.markedItem(), 11);
        QTest::keyClick(&chart, Qt::Key_Right);
        QCOMPARE(chart.markedItem(), 11);
        QTest::keyClick(&chart, Qt::Key_Left);
        QTest::keyClick(&chart, Qt::Key_Left);
        QCOMPARE(chart.markedItem(), 9);
        QTest::keyClick(&chart, Qt::Key_Return);
        QTest::keyClick(&chart, Qt::Key_Home);
        QCOMPARE(chart.markedItem(), 0);
        QCOMPARE(activated.takeFirst().first().toInt(), 9);
        QVERIFY(chart.accessibleDescription().contains(
            u"2026年3月，收入 1.00 元，支出 0.50 元，净额 0.50 元"_s));
        // The newest months go, and the mark with them.
        QTest::keyClick(&chart, Qt::Key_End);
        chart.setItems(months(2, {}));
        QCOMPARE(chart.markedItem(), 1);
        chart.setItems({});
        QCOMPARE(chart.markedItem(), -1);
        QCOMPARE(chart.focusPolicy(), Qt::NoFocus);
    }

    void aClickTellsWhichItem()
    {
        ShareBar bar(u"风险分布"_s);
        bar.resize(416, 112);
        bar.setItems({ { u"高风险"_s, 1, u"1 笔"_s }, { u"中风险"_s, 0, u"0 笔"_s },
            { u"正常"_s, 99, u"99 笔"_s } });
        QSignalSpy activated(&bar, &ChartView::activated);
        QTest::mouseClick(&bar, Qt::LeftButton, {}, { 10, 20 }); // the sliver of the first part
        QTest::mouseClick(&bar, Qt::LeftButton, {}, { 200, 80 }); // the name of the empty one
        QTest::mouseClick(&bar, Qt::LeftButton, {}, { 2, 110 });
        QCOMPARE(activated.size(), 2);
        QCOMPARE(activated.at(0).first().toInt(), 0);
        QCOMPARE(activated.at(1).first().toInt(), 1);
    }

    void extremeAmountsArePainted_data()
    {
        addColumns<qint64, int>("fen", "width");
        addCase("nothing", qint64 { 0 }, 640);
        addCase("far beyond any ledger", qint64 { 90'000'000'000'000'000 }, 640);
        addCase("no room at all", qint64 { 12'345 }, 20);
    }

    void extremeAmountsArePainted()
    {
        QFETCH(qint64, fen);
        QFETCH(int, width);
        BarChart chart(u"收支"_s);
        chart.resize(width, 280);
        chart.setItems(months(40, { fen, fen / 2, -fen }));
        QVERIFY(!chart.grab().isNull());
    }
};

static const RegisteredTest<TestCharts> registered;
#include "TestCharts.moc"
