#pragma once

#include <QIcon>
#include <QPixmap>

/// The mark of the program: the spine of a ledger and two bricks that never touch, the company's
/// property and the owner's. It brings its own ground and therefore suits both themes.
namespace Logo {

/// For windows and the task bar.
QIcon icon();

/// `size` is in device-independent pixels.
QPixmap pixmap(int size, qreal dpr = 1.0);

} // namespace Logo
