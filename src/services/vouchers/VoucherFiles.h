#pragma once

#include <QtGlobal>

class QWidget;

/// What the user does with an archived file outside of the program. Both tell in a box of their own
/// why they cannot; a file is only ever read from the archive's own folder.
namespace VoucherFiles {

/// Opens the file with the desktop's program for its type.
void openVoucherFile(QWidget* parent, qint64 voucherId);

/// Shows the file selected in the file manager, or its folder where there is no "explorer.exe".
void showVoucherInFolder(QWidget* parent, qint64 voucherId);

} // namespace VoucherFiles
