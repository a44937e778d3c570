#pragma once

#include <QString>

class QWidget;

/// Hands files and folders of ours to the desktop. Each function tells in a box of its own why it
/// could not, and returns whether it could.
namespace DesktopFiles {

/// Opens the picture or PDF with the desktop's program for its type. Other files are not opened:
/// the desktop would run those that are programs.
bool openFile(QWidget* parent, const QString& path);

/// Shows the file selected in the file manager, or its folder where there is no "explorer.exe".
bool showInFolder(QWidget* parent, const QString& path);

/// Opens a folder in the file manager.
bool openFolder(QWidget* parent, const QString& path);

/// The box in which the services tell what cannot be shown.
void warn(QWidget* parent, const QString& title, const QString& text);

} // namespace DesktopFiles
