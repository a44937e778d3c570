#include "widgets/BannerKind.h"

Token textTokenOf(BannerKind kind)
{
    static constexpr auto tokens = std::to_array<Token>(
        { Token::InfoText, Token::WarningText, Token::DangerText, Token::SuccessText });
    return tokens[static_cast<std::size_t>(kind)];
}
