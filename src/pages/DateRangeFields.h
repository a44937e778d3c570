#pragma once

#include "services/figures/Period.h"

#include <QWidget>

class DateEditor;

/// The first and the last day of a range, either of which may stay open, and a menu of ranges
/// with names.
class DateRangeFields final : public QWidget {
    Q_OBJECT

public:
    explicit DateRangeFields(QWidget* parent = nullptr);

    DateRange range() const;
    /// Emits `rangeChanged` once when this changes the range.
    void setRange(const DateRange& range);

    /// Both fields hold a day or nothing, and the range is not inverted.
    bool isAcceptable() const { return problem().isEmpty(); }

    /// What is wrong with the fields, in Chinese; empty when nothing is.
    QString problem() const;

    /// The first field, for the label in front.
    QWidget* firstField() const;

signals:
    void rangeChanged();
    /// Enter was pressed in one of the fields.
    void returnPressed();

private:
    void showPresets();

    DateEditor* m_from;
    DateEditor* m_to;
    QWidget* m_presets;
};
