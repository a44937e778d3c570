#pragma once

#include "theme/ThemeTokens.h"

#include <QIcon>
#include <QPixmap>

/// The program's line icons. A name is the file name of a drawing without its suffix; a name
/// that has no drawing is logged and gives an empty picture.
namespace Icons {

/// Coloured when it is painted: it follows the theme and the disabled state by itself and is
/// sharp at every size and device pixel ratio.
QIcon icon(QStringView name, Token token = Token::TextSecondary);

/// A picture in the colours of the present theme; `size` is in device-independent pixels.
QPixmap pixmap(QStringView name, Token token, int size, qreal dpr);
QPixmap pixmap(QStringView name, const QColor& color, int size, qreal dpr);

} // namespace Icons
