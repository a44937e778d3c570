#pragma once

class QLabel;

/// What a label is for; the style sheet gives each role its size, weight and colour.
enum class TextRole {
    PageTitle,
    CardTitle,
    SectionTitle,
    Value,
    Hint,
    Meta,
    Danger,
    Warning,
    Success
};

/// Takes effect at once, also on a label that is already visible.
void setTextRole(QLabel* label, TextRole role);
