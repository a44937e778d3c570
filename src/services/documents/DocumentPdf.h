#pragma once

#include <QByteArray>
#include <QString>

class QPrinter;
class QWidget;

/// Documents on paper: A4, portrait, margins of 25 mm, as a PDF file or from a printer, both with
/// the same pages. Errors are Chinese texts for the user.
namespace DocumentPdf {

/// The bytes of a PDF with a footer on every page; empty when it could not be painted.
[[nodiscard]] QByteArray render(const QString& html, const QString& title);

/// Writes the PDF whole or not at all, creates its folder where it is missing, and replaces a
/// file of that name.
[[nodiscard]] bool exportPdf(const QString& html, const QString& path, QString* error);

/// Whether the file is a PDF as it was made from exactly this text. False when it cannot be read.
[[nodiscard]] bool isOf(const QString& path, const QString& html);

/// Whether the file is a PDF as it was made here, whatever text it shows: nobody has scanned a
/// signed copy over it or added a note. False when it cannot be read.
[[nodiscard]] bool isUntouched(const QString& path);

/// The title that a PDF of this path carries: the file's name without its last suffix.
QString titleOf(const QString& path);
/// Creates the folder of a file that is to be written.
[[nodiscard]] bool ensureFolderOf(const QString& path, QString* error);
/// What the user reads when a PDF cannot be written.
QString cannotWrite(const QString& path);

/// Asks for a printer in a dialog of this title and prints there; nothing happens when the user
/// declines.
void printHtml(
    const QString& html, QWidget* parent, const QString& title = QStringLiteral("打印文书"));
/// A printer that is set to the page of documents.
void usePageLayout(QPrinter& printer);
/// Prints the pages, copies and order that the printer is set to, on its paper; no footer. False
/// when the printer does not take the job.
bool print(const QString& html, QPrinter& printer);

} // namespace DocumentPdf
