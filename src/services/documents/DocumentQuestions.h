#pragma once

#include "db/DocumentRecord.h"

#include <QList>
#include <QString>

/// What the user is asked before a stored document changes, with the consequences. Pure; Chinese,
/// plain text.
namespace DocumentQuestions {

/// Whether the number of the document is handed out again once it is gone: it is the highest of
/// its kind and year.
bool freesItsNumber(const DocumentRecord& record, const QList<DocumentRecord>& all);

QString regenerate(const DocumentRecord& record);
/// `covered` is how many ledger entries the document covers.
QString remove(const DocumentRecord& record, qsizetype covered, bool freesNumber);
/// The PDF is missing and can be written again from what is stored.
QString restoreFile(const DocumentRecord& record, const QString& path);
/// The PDF does not show what is stored.
QString openOther(const DocumentRecord& record, const QString& path);
/// The year has an annual decision already.
QString secondAnnual(int year);

} // namespace DocumentQuestions
