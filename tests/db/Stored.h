#pragma once

#include "db/DocumentRecord.h"

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

/// A document with every field set to something of its own, not yet stored.
inline DocumentRecord wholeDocument()
{
    using namespace Qt::StringLiterals;
    return { .docType = DocType::FundDecision,
        .docNo = u"KYR-FD-2025-0001"_s,
        .title = u"标题"_s,
        .docYear = 2024,
        .docDate = QDate(2025, 1, 2),
        .fundDirection = Direction::Out,
        .fundNature = u" 借款 "_s,
        .settleDate = QDate(2025, 12, 31),
        .extraText = u"补充"_s,
        .selectedItems = u"[1,2]"_s,
        .contentHtml = u"<p>正文</p>"_s,
        .filePath = u"/data/a.pdf"_s };
}

} // namespace Stored
