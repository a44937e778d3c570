#pragma once

#include <QFont>

/// What documents are set in.
namespace DocumentFont {

/// The font in the size of running text, and in another one. Brings its substitutes along.
QFont text();
QFont sized(qreal points);

/// Names the fonts that stand in where the Microsoft fonts are missing; more than once does no
/// harm.
void registerSubstitutes();

} // namespace DocumentFont
