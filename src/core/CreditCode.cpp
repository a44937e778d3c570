#include "core/CreditCode.h"

#include "core/TextRules.h"

#include <QStringView>

namespace CreditCode {

namespace {

// I, O, S, V and Z are left out: they are too easily taken for other characters.
constexpr QStringView alphabet = u"0123456789ABCDEFGHJKLMNPQRTUWXY";
constexpr qsizetype codeLength = 18;

} // namespace

QString normalized(const QString& text)
{
    return TextRules::asStored(text).toUpper();
}

bool isValid(const QString& code)
{
    if (code.size() != codeLength)
        return false;
    const qsizetype base = alphabet.size();
    qsizetype sum = 0;
    qsizetype weight = 1;
    for (qsizetype i = 0; i < codeLength - 1; ++i) {
        const qsizetype value = alphabet.indexOf(code.at(i));
        if (value < 0)
            return false;
        sum += value * weight;
        weight = weight * 3 % base;
    }
    const qsizetype check = (base - sum % base) % base;
    return alphabet.at(check) == code.at(codeLength - 1);
}

} // namespace CreditCode
