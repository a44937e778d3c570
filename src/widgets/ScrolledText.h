#pragma once

class QLabel;
class QWidget;

/// Room for texts whose length nobody can foresee: they must not push buttons off the screen.
namespace ScrolledText {

/// The wrapped label itself while its text fits into `mostHeight` at this width; else a frame of
/// that height, a child of the label's parent, in which the whole text scrolls.
[[nodiscard]] QWidget* bounded(QLabel* label, int width, int mostHeight);

} // namespace ScrolledText
