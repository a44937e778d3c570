#pragma once

#include <QLabel>

/// A heading between the rows of a form.
class SectionTitle final : public QLabel {
    Q_OBJECT

public:
    explicit SectionTitle(const QString& text, QWidget* parent = nullptr);
};
