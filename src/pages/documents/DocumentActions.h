#pragma once

#include <QtGlobal>

class QWidget;

/// What the user does with a stored document, wherever it is shown. Each asks and tells what has
/// to be said in boxes of its own.
namespace DocumentActions {

/// Opens the PDF; one that is missing is offered to be written again first, one
/// that does not show what is stored is asked about.
void open(QWidget* parent, qint64 id);
/// The same for the folder of the PDF.
void showInFolder(QWidget* parent, qint64 id);
/// Prints what is stored, with or without the PDF.
void print(QWidget* parent, qint64 id);

/// True when the document was drawn up anew.
bool regenerate(QWidget* parent, qint64 id);
/// True when the document is gone.
bool remove(QWidget* parent, qint64 id);

} // namespace DocumentActions
