#include "widgets/StartFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

namespace StartFolder {

QString firstOf(const QStringList& wanted)
{
    // A folder that is not there would stand in the dialog as the name of the file.
    const auto found = std::find_if(wanted.begin(), wanted.end(),
        [](const QString& folder) { return QFileInfo(folder).isDir(); });
    return found == wanted.end() ? QDir::homePath() : *found;
}

QString lastOrDocuments(const QString& last)
{
    return firstOf({ last, QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) });
}

} // namespace StartFolder
