#pragma once

#include <QList>
#include <QtGlobal>

class QTextDocument;

/// The look of ruled tables, which Qt alone leaves wanting: once a cell spans several columns all
/// get the same share of the width, and what follows the table touches its lowest rule.
namespace TableColumns {

/// Gives the columns of every ruled table their share by their longest texts, and the table its
/// distance from what follows. Before the document is laid out.
void arrange(QTextDocument& document);

/// Parts of `available`: a column that asks for less than an even part gets what it asks for, and
/// the others divide the rest evenly. Pure; the parts add up to `available`.
QList<qreal> parts(const QList<qreal>& wanted, qreal available);

} // namespace TableColumns
