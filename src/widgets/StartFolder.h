#pragma once

#include <QString>
#include <QStringList>

/// Where a dialog for files begins.
namespace StartFolder {

/// The first of these folders that is there, else the user's home. Empty ones are passed over.
[[nodiscard]] QString firstOf(const QStringList& wanted);

/// Where the user was last, at first their documents.
[[nodiscard]] QString lastOrDocuments(const QString& last);

} // namespace StartFolder
