#pragma once

#include <QList>
#include <QString>
#include <QVariant>

/// Rows that no form of the program would store, put into the open database past all its rules.
namespace HostileRows {

/// Looks like markup everywhere in the hostile texts.
inline const QString markup = QStringLiteral("<b>粗</b>");

/// Markup, placeholders, quotes, line breaks, bidirectional marks, emoji, halves of characters,
/// formulas, and 10,000 characters: texts, and bytes that are none.
QList<QVariant> texts();

/// A row of this table; bytes are stored as text. The first error, or an empty text.
QString insert(const QString& table, const QVariantMap& values);

/// An entry per text with broken dates, lists and codes and amounts beyond any sum, and projects,
/// contracts, vouchers, documents and links of their kind. The first error, or an empty text.
QString fill();

/// The ids of a table.
QList<qint64> ids(const QString& table);

} // namespace HostileRows
