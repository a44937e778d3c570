#pragma once

#include "core/Codes.h"

/// Which entries the categories tell to be movements of money between the company and its owner.
namespace OwnerFlows {

/// What one of them gave the other: loans, contributions, cash floats, profit.
constexpr bool isTransfer(Category category)
{
    return category == Category::ShareholderIn || category == Category::ShareholderOut;
}

/// The same and the expenses that the company repaid, which count when transfers are frequent.
constexpr bool isTransferOrRefund(Category category)
{
    return isTransfer(category) || category == Category::ExpenseReimburse;
}

} // namespace OwnerFlows
