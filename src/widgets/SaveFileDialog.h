#pragma once

#include <QString>

class QWidget;

/// Asks where a file is to be written. Starts in the folder that was chosen last since the
/// program started, at first in the user's documents, or the home folder where there are none.
namespace SaveFileDialog {

/// The chosen path, absolute; empty when the user changed their mind. `filter` is one such as
/// "CSV 文件 (*.csv)"; its suffix is added to names that have none. An existing file is only
/// returned after the user agreed to replace it.
[[nodiscard]] QString ask(
    QWidget* parent, const QString& title, const QString& filter, const QString& fileName);

} // namespace SaveFileDialog
