#pragma once

#include "widgets/FieldLabel.h"

#include <QFormLayout>

/// The parts of one row, for rows that change later. `hint` is null without a hint.
struct FormRow {
    FieldLabel* label = nullptr;
    QWidget* cell = nullptr; // what stands in the field column: for QFormLayout::setRowVisible
    QLabel* hint = nullptr;
};

/// A form whose every field knows its label: star, buddy and accessible name come with the row.
class FormRows final : public QFormLayout {
    Q_OBJECT

public:
    explicit FormRows(QWidget* parent = nullptr);

    FormRow addRow(const QString& label, QWidget* field, Required required = Required::No,
        const QString& hint = {});

    /// For a field that stands beside something else inside `wrapper`.
    FormRow addWrappedRow(const QString& label, QWidget* wrapper, QWidget* field,
        Required required = Required::No, const QString& hint = {});
};
