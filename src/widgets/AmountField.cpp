#include "widgets/AmountField.h"

#include "core/Money.h"
#include "widgets/WheelGuard.h"

#include <QFocusEvent>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Larger than the largest amount that may be stored, so that the form can say what is wrong with
// a larger one instead of refusing the key.
constexpr double largestInput = 999'999'999.99;

bool isNoise(QChar c)
{
    return QStringView(u",，¥￥元").contains(c) || c.isSpace();
}

QChar halfWidth(QChar c)
{
    if (c == u'。' || c == u'．')
        return u'.';
    return c >= u'０' && c <= u'９' ? QChar(c.unicode() - u'０' + u'0') : c;
}

QString tidied(QStringView typed)
{
    QString result;
    for (const QChar c : typed) {
        if (!isNoise(c))
            result += halfWidth(c);
    }
    return result;
}

} // namespace

AmountField::AmountField(QWidget* parent)
    : QDoubleSpinBox(parent)
{
    QLocale plain = QLocale::c();
    plain.setNumberOptions(QLocale::OmitGroupSeparator | QLocale::RejectGroupSeparator);
    setLocale(plain);
    setGroupSeparatorShown(false);
    setButtonSymbols(NoButtons);
    setDecimals(2);
    setRange(0, largestInput);
    setSuffix(u" 元"_s);
    WheelGuard::protect(this);
}

qint64 AmountField::amountFen() const
{
    return Money::fromYuan(value());
}

void AmountField::setAmountFen(qint64 fen)
{
    setValue(static_cast<double>(fen) / 100.0);
}

QValidator::State AmountField::validate(QString& input, int& position) const
{
    const qsizetype end = input.endsWith(suffix()) ? input.size() - suffix().size() : input.size();
    const QString number = tidied(QStringView(input).first(end));
    if (number != QStringView(input).first(end)) {
        const qsizetype before = std::min<qsizetype>(position, end);
        position = static_cast<int>(tidied(QStringView(input).first(before)).size());
        input.replace(0, end, number);
    }
    return number.isEmpty() ? QValidator::Acceptable : QDoubleSpinBox::validate(input, position);
}

double AmountField::valueFromText(const QString& text) const
{
    const QString number = text.endsWith(suffix()) ? text.chopped(suffix().size()) : text;
    return number.isEmpty() ? 0 : QDoubleSpinBox::valueFromText(text);
}

void AmountField::focusInEvent(QFocusEvent* event)
{
    QDoubleSpinBox::focusInEvent(event);
    // Later, because the click that brought the focus still has to place its cursor.
    QTimer::singleShot(0, this, [this] {
        if (hasFocus())
            selectAll();
    });
}
