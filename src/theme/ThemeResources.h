#pragma once

namespace ThemeResources {

/// Makes the icons, the logo and the style sheet readable. The linker drops the resources of a
/// static library that nobody asks for, so everything that opens one of them calls this first.
void ensure();

} // namespace ThemeResources
