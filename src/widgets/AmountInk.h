#pragma once

#include "core/Codes.h"
#include "theme/ThemeTokens.h"

/// The colour of an amount, which tells income from expense beside its sign or label.
constexpr Token amountInk(Direction direction)
{
    return direction == Direction::In ? Token::AmountIn : Token::AmountOut;
}
