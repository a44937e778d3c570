#include "core/TextRules.h"

using namespace Qt::StringLiterals;

namespace TextRules {

qsizetype characterCount(QStringView text)
{
    // A low surrogate that follows a high one is the second half of a character.
    qsizetype halves = 0;
    for (qsizetype i = 1; i < text.size(); ++i) {
        if (text[i].isLowSurrogate() && text[i - 1].isHighSurrogate())
            ++halves;
    }
    return text.size() - halves;
}

bool isBlank(const QString& text)
{
    return QStringView(text).trimmed().isEmpty();
}

QString dateText(QDate date)
{
    return date.toString(u"yyyy-MM-dd");
}

QDate dateFromText(const QString& text)
{
    return QDate::fromString(text, u"yyyy-MM-dd"_s);
}

QString timestampText(const QDateTime& time)
{
    return time.toString(u"yyyy-MM-dd HH:mm:ss");
}

QString currentTimestamp()
{
    return timestampText(QDateTime::currentDateTime());
}

} // namespace TextRules
