#include "theme/StyleSheet.h"

#include "theme/ThemeResources.h"

#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

QString templateText()
{
    ThemeResources::ensure();
    QFile file(u":/brixa/style/brixa.qss"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        qWarning("The style sheet is missing from the program");
        return {};
    }
    return QString::fromUtf8(file.readAll());
}

// Images in a style sheet cannot be coloured by us when they are drawn, so each mode brings its
// own set.
QString valueOf(QStringView placeholder, ThemeMode mode)
{
    if (placeholder == u"controls")
        return u":/brixa/icons/controls/"_s + codeOf(mode);
    if (const auto token = tokenFromName(placeholder))
        return tokenColor(*token, mode).name();
    qWarning("The style sheet names an unknown token: %s", qUtf8Printable(placeholder.toString()));
    return placeholder.toString();
}

} // namespace

QString styleSheetFor(ThemeMode mode)
{
    static const QRegularExpression placeholder(u"@([A-Za-z]+)"_s);
    const QString text = templateText();
    QString filled;
    qsizetype done = 0;
    for (auto matches = placeholder.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        filled += QStringView(text).mid(done, match.capturedStart() - done);
        filled += valueOf(match.capturedView(1), mode);
        done = match.capturedEnd();
    }
    filled += QStringView(text).mid(done);
    return filled;
}
