#pragma once

/// What the self-check of this start of the program found, for the pages that tell the user.
namespace SelfCheckState {

/// False until a check has run.
[[nodiscard]] bool hasFailed();
void setFailed(bool failed);

} // namespace SelfCheckState
