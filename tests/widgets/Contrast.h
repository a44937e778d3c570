#pragma once

#include <QColor>
#include <QList>
#include <QString>

/// Contrast as WCAG 2 measures it, and the colour pairs of a filled style sheet.
namespace Contrast {

inline constexpr double text = 4.5;
inline constexpr double graphics = 3.0;

/// Between 1 and 21.
double ratio(const QColor& a, const QColor& b);

struct Rule {
    QString selector;
    QColor text; // invalid: the rule sets none
    QColor ground; // invalid: none, or transparent
};

/// Every rule that sets a text colour; the colours of selected text count as a rule of their own.
QList<Rule> textRules(const QString& styleSheet);

} // namespace Contrast
