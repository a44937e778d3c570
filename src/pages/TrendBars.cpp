#include "pages/TrendBars.h"

QList<BarChart::Item> barsOf(const QList<Trend::Step>& steps)
{
    QList<BarChart::Item> bars;
    for (const Trend::Step& step : steps)
        bars += { step.title, step.label, step.group, { step.inFen, step.outFen, step.netFen() } };
    return bars;
}
