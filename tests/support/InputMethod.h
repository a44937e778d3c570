#pragma once

class QString;

namespace InputMethod {

/// Puts `text` into the field that has the keyboard, the way an input method commits Chinese:
/// key clicks exist for ASCII only. Replaces the selection. Fails the test without such a field.
void commit(const QString& text);

} // namespace InputMethod
