#pragma once

#include <QString>
#include <QStringList>

/// Cutting of SQL scripts, for a driver that takes one statement at a time.
namespace SqlScript {

/// The statements of a script in order, comments and surrounding white space included. A trigger
/// body stays whole. Block comments are not understood.
QStringList splitStatements(const QString& text);

/// The text without "--" comments; line breaks and quoted text are kept.
QString stripLineComments(const QString& text);

} // namespace SqlScript
