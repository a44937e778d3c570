#pragma once

#include "db/DocumentRecord.h"

#include <QStringList>

/// Where the PDF of a document lies. Rows keep the absolute path under which it was written; a
/// data directory that was moved or copied still finds its own file, and one that was copied
/// never writes to or removes the original's.
namespace DocumentFiles {

/// The name of a new document's PDF: number and kind.
QString fileName(const DocumentRecord& record);

/// The path in the present exports folder: the only one that may be written or removed.
QString ownFile(const DocumentRecord& record);

/// The path to open or show: the own file if it is there, else the stored path if a PDF is there,
/// else the own file as the place to write to.
QString documentFile(const DocumentRecord& record);
bool isThere(const DocumentRecord& record);

/// Whether the row of another document than `id` names the file. True when the rows cannot be
/// read: what is not known to be free is left alone.
bool isNamedByOther(const QString& path, qint64 id);

/// Files in the exports folder that no row names, by name: PDFs, and the `.new` and `.old` that a
/// crash left between writing and storing. They are to be reported and never deleted. Empty when
/// the rows cannot be read.
QStringList filesWithoutRow();

/// Undoes regenerations that a crash cut off between the new PDF and its row: where the own file of
/// a document is missing or a PDF of another text, and a `.old` beside it shows the stored text or
/// is a signed copy, that one takes its place again. What lay there is put aside and kept; a signed
/// copy in its place stays there. Belongs after the opening of the database.
void repair();

} // namespace DocumentFiles
