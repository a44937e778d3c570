#pragma once

#include <optional>

/// What a store that was fresh before the call has read; nothing when it failed. A figure that
/// could not be read must not look like 0.
template <typename Store, typename Value>
[[nodiscard]] std::optional<Value> ifRead(const Store& store, const Value& value)
{
    return store.lastError().isEmpty() ? std::optional(value) : std::nullopt;
}
