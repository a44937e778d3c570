#pragma once

#include "core/CodeTable.h"

#include <QComboBox>

#include <optional>

/// Combo boxes over the program's enumerations: labels for the user, codes as item data.

/// Replaces the items by the enumeration's labels in table order, after `anyText` for "none of
/// them" where one is given.
template <typename Enum> void fillChoices(QComboBox* combo, const QString& anyText = {})
{
    combo->clear();
    if (!anyText.isEmpty())
        combo->addItem(anyText);
    for (const Enum value : allValues<Enum>())
        combo->addItem(labelOf(value), codeOf(value));
}

/// Nothing when the item for "any" or no item is chosen.
template <typename Enum> std::optional<Enum> choiceOf(const QComboBox* combo)
{
    const QString code = combo->currentData().toString();
    if (code.isEmpty())
        return std::nullopt;
    return fromCode<Enum>(code);
}

/// Nothing chooses the item for "any".
template <typename Enum> void setChoice(QComboBox* combo, std::optional<Enum> value)
{
    combo->setCurrentIndex(value ? combo->findData(codeOf(*value)) : 0);
}
