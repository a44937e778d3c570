#include "core/TextRules.h"

#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace TextRules {

namespace {

// The number that ASCII digits write; 0, which no part of a date can be, for anything else.
int numberOf(QStringView digits)
{
    int number = 0;
    for (const QChar c : digits) {
        if (c < u'0' || c > u'9')
            return 0;
        number = number * 10 + (c.unicode() - u'0');
    }
    return number;
}

void putDigits(QString& text, qsizetype begin, qsizetype count, int number)
{
    for (qsizetype i = begin + count - 1; i >= begin; --i, number /= 10)
        text[i] = QChar(u'0' + number % 10);
}

} // namespace

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

bool isDirectionMark(QChar c)
{
    return c == QChar(0x061c) || c == QChar(0x200e) || c == QChar(0x200f)
        || (c >= QChar(0x202a) && c <= QChar(0x202e)) || (c >= QChar(0x2066) && c <= QChar(0x2069));
}

QString withoutDirectionMarks(QString text)
{
    text.removeIf(isDirectionMark);
    return text;
}

bool isBlank(const QString& text)
{
    return std::all_of(
        text.cbegin(), text.cend(), [](QChar c) { return c.isSpace() || isDirectionMark(c); });
}

QString asStored(const QString& text)
{
    return withoutDirectionMarks(text).trimmed();
}

QString oneLine(const QString& text)
{
    static const QRegularExpression breaks(u"\\s*[\\n\\r\\t\\f\\v\\x{85}\\x{2028}\\x{2029}]\\s*"_s,
        QRegularExpression::UseUnicodePropertiesOption);
    return asStored(text).replace(breaks, u" "_s);
}

bool holds(const QString& text, const QString& keyword)
{
    return withoutDirectionMarks(text).contains(
        withoutDirectionMarks(keyword), Qt::CaseInsensitive);
}

QString dateText(QDate date)
{
    if (!date.isValid())
        return {};
    int year = 0;
    int month = 0;
    int day = 0;
    date.getDate(&year, &month, &day);
    if (year < 1 || year > 9999)
        return date.toString(u"yyyy-MM-dd");
    // Digit by digit, as for the way back: a format is read anew for every date.
    QString text(10, u'-');
    putDigits(text, 0, 4, year);
    putDigits(text, 5, 2, month);
    putDigits(text, 8, 2, day);
    return text;
}

QDate dateFromText(QStringView text)
{
    // Digit by digit: parsing by a format takes longer than all the rest of reading a row.
    if (text.size() != 10 || text.at(4) != u'-' || text.at(7) != u'-')
        return {};
    return QDate(numberOf(text.first(4)), numberOf(text.sliced(5, 2)), numberOf(text.last(2)));
}

QDate dateFromInput(QStringView text)
{
    QString typed = text.trimmed().toString();
    for (QChar& c : typed) {
        // The full-width forms of ASCII lie at a fixed distance.
        if (c >= u'！' && c <= u'～')
            c = QChar(c.unicode() - 0xfee0);
        else if (c == u'。')
            c = u'.';
    }
    static const QRegularExpression form(
        u"^(\\d{4})(?:(\\d{2})(\\d{2})|([-/.])(\\d{1,2})\\4(\\d{1,2}))$"_s);
    const QRegularExpressionMatch match = form.match(typed);
    const bool packed = match.hasCaptured(2);
    const QDate date(numberOf(match.capturedView(1)), numberOf(match.capturedView(packed ? 2 : 5)),
        numberOf(match.capturedView(packed ? 3 : 6)));
    return date.year() >= 1900 ? date : QDate();
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
