#pragma once

#include "core/Codes.h"

#include <QString>
#include <QStringList>

/// The fixed sentences of the statutory documents that a form offers for choice, and the names
/// under which documents go. All plain text.
namespace DocumentTexts {

/// The two report items of an annual decision.
QStringList annualReportItems(int year);
/// The profit that goes to the owner, with the way of payment as the user named it.
QString profitDistributed(qint64 fen, const QString& method);
QString profitKept();
/// An item in the user's own words.
QString otherItem(const QString& text);

/// The measures of an independence statement, in the order in which they are offered.
QStringList independenceMeasures();
/// Measures in the user's own words.
QString furtherMeasures(const QString& text);

/// Which way the money went, seen from owner and company.
QString directionLabel(Direction direction);
/// What money of that direction usually is, offered for choice; the user's own words go as well.
QStringList fundNatures(Direction direction);
/// The usual ways in which a profit reaches the owner, offered for choice.
QStringList profitMethods();

/// The name of a kind of document as it stands in titles and file names.
QString kindName(DocType type);

/// The number that opens an item: "（一）", "（十）", "（二十一）". From 100 on with digits.
QString itemNumber(int number);

} // namespace DocumentTexts
