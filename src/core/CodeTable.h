#pragma once

#include <QString>
#include <QStringView>

#include <algorithm>
#include <array>
#include <vector>

/// One row of an enumeration's table: the value, the ASCII code that the database stores and the
/// Chinese label that the user reads.
template <typename Enum> struct CodeRow {
    Enum value;
    QStringView code;
    QStringView label;
};

/// The table of an enumeration, in the order of its integer values. Specialised per enumeration.
template <typename Enum> inline constexpr std::array<CodeRow<Enum>, 0> codeTable {};

/// What an unknown code or an out-of-range value stands for, so that a damaged row still loads.
template <typename Enum> inline constexpr Enum codeFallback {};

namespace CodeTableDetail {

template <typename Enum> constexpr const CodeRow<Enum>& row(Enum value)
{
    static_assert(codeTable<Enum>.size() > 0, "the enumeration has no code table");
    const auto matches
        = [value](const CodeRow<Enum>& candidate) { return candidate.value == value; };
    const auto& rows = codeTable<Enum>;
    const auto found = std::find_if(rows.begin(), rows.end(), matches);
    return found != rows.end() ? *found : row(codeFallback<Enum>);
}

} // namespace CodeTableDetail

/// The stored ASCII code of a value.
template <typename Enum> QString codeOf(Enum value)
{
    return CodeTableDetail::row(value).code.toString();
}

/// The Chinese label of a value.
template <typename Enum> QString labelOf(Enum value)
{
    return CodeTableDetail::row(value).label.toString();
}

/// The value of a stored code; the enumeration's fallback when the code is unknown.
template <typename Enum> Enum fromCode(QStringView code)
{
    for (const auto& row : codeTable<Enum>) {
        if (row.code == code)
            return row.value;
    }
    return codeFallback<Enum>;
}

/// All values in table order.
template <typename Enum> std::vector<Enum> allValues()
{
    std::vector<Enum> values;
    values.reserve(codeTable<Enum>.size());
    for (const auto& row : codeTable<Enum>)
        values.push_back(row.value);
    return values;
}
