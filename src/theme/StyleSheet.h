#pragma once

#include "theme/ThemeTokens.h"

#include <QString>

/// The application style sheet with the colours of a mode filled in. A placeholder that names no
/// token is logged.
QString styleSheetFor(ThemeMode mode);
