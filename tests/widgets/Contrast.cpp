#include "widgets/Contrast.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace Contrast {

namespace {

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

// The last colour that one of the properties gets inside a rule.
QColor colorOf(const QString& body, const QString& properties)
{
    const QRegularExpression pattern(
        u"(?<![-\\w])(?:%1)\\s*:\\s*(#[0-9a-fA-F]{6}|transparent)"_s.arg(properties));
    QColor color;
    for (auto matches = pattern.globalMatch(body); matches.hasNext();) {
        const QString value = matches.next().captured(1);
        color = value == u"transparent" ? QColor() : QColor(value);
    }
    return color;
}

} // namespace

double ratio(const QColor& a, const QColor& b)
{
    const auto [dark, light] = std::minmax({ luminance(a), luminance(b) });
    return (light + 0.05) / (dark + 0.05);
}

QList<Rule> textRules(const QString& styleSheet)
{
    static const QRegularExpression comments(
        u"/\\*.*?\\*/"_s, QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression rule(u"([^{}]+)\\{([^{}]*)\\}"_s);
    QList<Rule> rules;
    const QString code = QString(styleSheet).remove(comments);
    for (auto matches = rule.globalMatch(code); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        const QString selector = match.captured(1).simplified();
        const QString body = match.captured(2);
        const QList<Rule> found {
            { selector, colorOf(body, u"color"_s),
                colorOf(body, u"background|background-color"_s) },
            { selector + u" (selected)"_s, colorOf(body, u"selection-color"_s),
                colorOf(body, u"selection-background-color"_s) },
        };
        std::copy_if(found.begin(), found.end(), std::back_inserter(rules),
            [](const Rule& candidate) { return candidate.text.isValid(); });
    }
    return rules;
}

} // namespace Contrast
