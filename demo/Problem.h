#pragma once

#include <QString>

#include <optional>

/// What went wrong in a step of the demo, in English; nothing when all is well.
using Problem = std::optional<QString>;
