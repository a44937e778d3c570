#include "services/SelfCheckState.h"

namespace SelfCheckState {

namespace {

bool& failedFlag()
{
    static bool failed = false;
    return failed;
}

} // namespace

bool hasFailed()
{
    return failedFlag();
}

void setFailed(bool failed)
{
    failedFlag() = failed;
}

} // namespace SelfCheckState
