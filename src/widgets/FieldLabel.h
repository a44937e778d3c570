#pragma once

#include <QLabel>

/// `Trailing`: required too, with the star behind the text.
enum class Required { No, Yes, Trailing };

/// The label of a form field. A required one carries a red star, which follows the theme; the
/// name that assistive technology reads is always the plain text.
class FieldLabel final : public QLabel {
    Q_OBJECT

public:
    explicit FieldLabel(
        const QString& text, Required required = Required::No, QWidget* parent = nullptr);

    /// Makes `field` the buddy and gives it the plain text as its accessible name.
    void nameField(QWidget* field);

private:
    void render();

    const QString m_plainText;
    const Required m_required;
};
