#pragma once

#include <QList>

/// What tests of the stores have in common.
namespace Stored {

/// Stores a record; its number, or 0 when the store refuses it.
template <typename Dao, typename Record> qint64 add(Record record)
{
    return Dao().insert(record) ? record.id : 0;
}

template <typename Record> QList<qint64> idsOf(const QList<Record>& records)
{
    QList<qint64> ids;
    for (const Record& record : records)
        ids += record.id;
    return ids;
}

} // namespace Stored
