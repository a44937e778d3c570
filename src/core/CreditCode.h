#pragma once

#include <QString>

/// The unified social credit code (统一社会信用代码) of GB 32100-2015: 18 characters, the last of
/// which checks the others.
namespace CreditCode {

/// As it is stored: without surrounding blanks, in capitals.
QString normalized(const QString& text);

/// True when a normalised code has 18 permitted characters and its check character fits.
bool isValid(const QString& code);

} // namespace CreditCode
