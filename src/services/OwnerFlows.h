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

/// Whether the money of an entry may have passed between company and owner: by its category, or
/// because a private account stands on one side. Between two others it cannot have.
constexpr bool mayConcernOwner(
    Category category, AccountType ownAccount, AccountType counterpartyAccount)
{
    return isTransferOrRefund(category) || ownAccount == AccountType::Private
        || counterpartyAccount == AccountType::Private;
}

} // namespace OwnerFlows
