#include "core/Money.h"

#include <array>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;

namespace Money {

namespace {

// Unsigned, because the smallest 64-bit amount has no positive counterpart.
quint64 magnitude(qint64 fen)
{
    return fen < 0 ? quint64 { 0 } - static_cast<quint64>(fen) : static_cast<quint64>(fen);
}

QString signedText(qint64 fen, const QString& yuanDigits)
{
    // Piece by piece: an export writes an amount per line of the ledger.
    const auto cents = static_cast<char16_t>(magnitude(fen) % 100);
    QString text;
    text.reserve(yuanDigits.size() + 4);
    if (fen < 0)
        text += u'-';
    text += yuanDigits;
    text += u'.';
    text += QChar(u'0' + cents / 10);
    text += QChar(u'0' + cents % 10);
    return text;
}

QString grouped(const QString& digits)
{
    QString text = digits;
    for (qsizetype position = text.size() - 3; position > 0; position -= 3)
        text.insert(position, u',');
    return text;
}

constexpr auto capitalDigits = std::to_array<char16_t>(
    { u'零', u'壹', u'贰', u'叁', u'肆', u'伍', u'陆', u'柒', u'捌', u'玖' });

QChar capitalDigit(quint64 digit)
{
    return capitalDigits[static_cast<std::size_t>(digit)];
}

// A group is four decimal digits; zeros stay bare here and are tidied for the whole number.
QString capitalGroup(quint64 group)
{
    static constexpr auto placeUnits = std::to_array<QStringView>({ u"仟", u"佰", u"拾", u"" });
    static constexpr auto placeValues = std::to_array<quint64>({ 1000, 100, 10, 1 });
    QString text;
    for (std::size_t place = 0; place < placeValues.size(); ++place) {
        const quint64 digit = group / placeValues[place] % 10;
        text += capitalDigit(digit);
        if (digit != 0)
            text += placeUnits[place];
    }
    return text;
}

QString tidiedZeros(QString text)
{
    while (text.contains(u"零零"_s))
        text.replace(u"零零"_s, u"零"_s);
    for (const QString& unit : { u"万亿"_s, u"亿"_s, u"万"_s })
        text.replace(u"零"_s + unit, unit);
    if (text.endsWith(u'零'))
        text.chop(1);
    return text;
}

QString capitalYuan(quint64 yuan)
{
    static constexpr auto groupUnits
        = std::to_array<QStringView>({ u"", u"万", u"亿", u"万亿", u"亿亿" });
    QString text;
    for (std::size_t group = 0; yuan > 0; ++group, yuan /= 10000) {
        const quint64 digits = yuan % 10000;
        text.prepend(
            digits == 0 ? capitalGroup(0) : capitalGroup(digits) + groupUnits[group].toString());
    }
    while (text.startsWith(u'零'))
        text.remove(0, 1);
    return tidiedZeros(text);
}

// What follows 元. Without whole yuan neither 元 nor a leading 零 is written.
QString capitalDecimals(quint64 jiao, quint64 fen, bool hasYuan)
{
    if (jiao == 0 && fen == 0)
        return u"整"_s;
    QString text;
    if (jiao != 0)
        text += capitalDigit(jiao) + u"角"_s;
    else if (hasYuan)
        text += u'零';
    if (fen != 0)
        text += capitalDigit(fen) + u"分"_s;
    return text;
}

} // namespace

qint64 fromYuan(double yuan)
{
    // The largest number has no double of its own; the next one is beyond.
    constexpr double beyond = 9223372036854775808.0;
    const double fen = yuan * 100.0;
    if (fen >= beyond)
        return std::numeric_limits<qint64>::max();
    return fen > -beyond ? std::llround(fen) : std::numeric_limits<qint64>::min();
}

QString format(qint64 fen)
{
    return signedText(fen, grouped(QString::number(magnitude(fen) / 100)));
}

QString formatPlain(qint64 fen)
{
    return signedText(fen, QString::number(magnitude(fen) / 100));
}

QString toChineseUpper(qint64 fen)
{
    if (fen == 0)
        return u"零元整"_s;
    const quint64 amount = magnitude(fen);
    const QString yuan = capitalYuan(amount / 100);
    QString text = fen < 0 ? u"负"_s : QString();
    if (!yuan.isEmpty())
        text += yuan + u'元';
    return text + capitalDecimals(amount / 10 % 10, amount % 10, !yuan.isEmpty());
}

} // namespace Money
