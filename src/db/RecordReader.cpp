#include "db/RecordReader.h"

#include "core/TextRules.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <limits>

using namespace Qt::StringLiterals;

namespace CellValue {

namespace {

// Texts without escapes, as compact JSON writes nearly all of them: then a quote always ends or
// begins a text. False for everything else, which is left to a real parser.
bool readPlainArray(QStringView json, QStringList& texts)
{
    const auto isSpecial = [](QChar c) { return c == u'\\' || c.unicode() < u' '; };
    if (json.size() < 4 || !json.startsWith(u"[\"") || !json.endsWith(u"\"]")
        || std::any_of(json.begin(), json.end(), isSpecial))
        return false;
    for (const QStringView text : json.sliced(2, json.size() - 4).tokenize(u"\",\""_s)) {
        if (text.contains(u'"'))
            return false;
        texts += text.toString();
    }
    return true;
}

} // namespace

void read(const QVariant& cell, qint64& field)
{
    // A damaged row may hold a number without an integer of its own: the nearest one stands for it.
    constexpr double beyond = 9223372036854775808.0;
    const double number = cell.typeId() == QMetaType::Double ? cell.toDouble() : 0;
    if (number >= beyond)
        field = std::numeric_limits<qint64>::max();
    else if (number <= -beyond)
        field = std::numeric_limits<qint64>::min();
    else
        field = cell.toLongLong();
}

void read(const QVariant& cell, int& field)
{
    using Limits = std::numeric_limits<int>;
    qint64 number = 0;
    read(cell, number);
    field = static_cast<int>(std::clamp<qint64>(number, Limits::min(), Limits::max()));
}

void read(const QVariant& cell, bool& field)
{
    field = cell.toLongLong() == 1;
}

void read(const QVariant& cell, QString& field)
{
    field = cell.toString();
}

void read(const QVariant& cell, QDate& field)
{
    QString made;
    field = TextRules::dateFromText(textOf(cell, made));
}

void read(const QVariant& cell, QStringList& field)
{
    field.clear();
    QString made;
    const QStringView json = textOf(cell, made).trimmed();
    if (json.isEmpty() || readPlainArray(json, field))
        return;
    field.clear();
    for (const auto& element : QJsonDocument::fromJson(json.toUtf8()).array())
        field += element.toString();
}

QVariant fromTexts(const QStringList& texts)
{
    if (texts.isEmpty())
        return {};
    const QJsonDocument json(QJsonArray::fromStringList(texts));
    // Bytes would be stored as a blob.
    return QString::fromUtf8(json.toJson(QJsonDocument::Compact));
}

} // namespace CellValue
