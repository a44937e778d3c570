#include "theme/ThemeResources.h"

#include <QtGlobal>

// Q_INIT_RESOURCE declares a function and therefore cannot stand inside a namespace.
static void initThemeResources()
{
    Q_INIT_RESOURCE(theme);
}

namespace ThemeResources {

void ensure()
{
    static const bool done = [] {
        initThemeResources();
        return true;
    }();
    Q_UNUSED(done)
}

} // namespace ThemeResources
