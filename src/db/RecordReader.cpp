#include "db/RecordReader.h"

#include "core/TextRules.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <limits>

namespace CellValue {

void read(const QVariant& cell, qint64& field)
{
    field = cell.toLongLong();
}

void read(const QVariant& cell, int& field)
{
    using Limits = std::numeric_limits<int>;
    field = static_cast<int>(std::clamp<qint64>(cell.toLongLong(), Limits::min(), Limits::max()));
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
    field = TextRules::dateFromText(cell.toString());
}

void read(const QVariant& cell, QStringList& field)
{
    field.clear();
    const QString json = cell.toString().trimmed();
    if (json.isEmpty())
        return;
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
