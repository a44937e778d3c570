#pragma once

#include "core/CodeTable.h"

#include <QDate>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>
#include <span>
#include <type_traits>
#include <vector>

/// How a stored cell becomes a field. Nothing here refuses a value: a damaged row must still load,
/// so an unknown code is the enumeration's fallback and a broken date is an unset one.
namespace CellValue {

void read(const QVariant& cell, qint64& field);
void read(const QVariant& cell, int& field);
void read(const QVariant& cell, bool& field); // true for exactly 1
void read(const QVariant& cell, QString& field);
void read(const QVariant& cell, QDate& field);
void read(const QVariant& cell, QStringList& field); // a JSON array of texts

/// The cell's own text where it holds one, so that looking at it copies nothing; else what the
/// cell reads as, kept in `made`.
inline QStringView textOf(const QVariant& cell, QString& made)
{
    if (cell.typeId() == QMetaType::QString)
        return *static_cast<const QString*>(cell.constData());
    made = cell.toString();
    return made;
}

template <typename Enum>
requires std::is_enum_v<Enum>
void read(const QVariant& cell, Enum& field)
{
    QString made;
    field = fromCode<Enum>(textOf(cell, made));
}

template <typename Value> void read(const QVariant& cell, std::optional<Value>& field)
{
    field.reset();
    if (!cell.isNull())
        read(cell, field.emplace());
}

/// The text under which a list is stored; a null value for an empty one.
QVariant fromTexts(const QStringList& texts);

} // namespace CellValue

/// Which column of a query fills which field of a record.
template <typename Record> struct Column {
    QStringView name;
    void (*read)(const QVariant& cell, Record& record);
};

namespace ColumnDetail {

template <typename Record, typename Value> Record recordOf(Value Record::*);

} // namespace ColumnDetail

/// The column that fills a member, as in `column<&Project::name>(u"name")`.
template <auto Member> constexpr auto column(QStringView name)
{
    using Record = decltype(ColumnDetail::recordOf(Member));
    return Column<Record> { name,
        [](const QVariant& cell, Record& record) { CellValue::read(cell, record.*Member); } };
}

/// Makes records of the rows of one query. Columns are found by name, once, because the order of
/// columns differs between migrated and new files; those that the query lacks leave their field
/// at its default.
template <typename Record> class RecordReader final {
public:
    RecordReader(std::span<const Column<Record>> columns, const QSqlQuery& query)
    {
        const QSqlRecord header = query.record();
        for (const Column<Record>& column : columns) {
            const int position = header.indexOf(column.name.toString());
            if (position >= 0)
                m_cells.push_back({ position, column.read });
        }
    }

    /// Fills a new record from the query's current row.
    void fill(const QSqlQuery& query, Record& record) const
    {
        for (const Cell& cell : m_cells)
            cell.read(query.value(cell.position), record);
    }

private:
    struct Cell {
        int position;
        void (*read)(const QVariant& cell, Record& record);
    };
    std::vector<Cell> m_cells;
};
