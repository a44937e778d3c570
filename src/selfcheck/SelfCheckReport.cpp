#include "selfcheck/SelfCheckReport.h"

#include <QStringList>

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

qsizetype SelfCheckReport::failures() const
{
    return std::count_if(
        suites.begin(), suites.end(), [](const SelfCheckResult& suite) { return !suite.ok; });
}

qint64 SelfCheckReport::ms() const
{
    return std::accumulate(suites.begin(), suites.end(), qint64(0),
        [](qint64 sum, const SelfCheckResult& suite) { return sum + suite.ms; });
}

QString logText(const QList<SelfCheckResult>& suites)
{
    QStringList lines;
    for (const SelfCheckResult& suite : suites)
        lines += u"  [%1] %2 (%3 ms): %4"_s.arg(
            suite.ok ? u"ok"_s : u"FAILED"_s, suite.name, QString::number(suite.ms), suite.message);
    return lines.join(u'\n');
}
