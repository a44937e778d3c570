#pragma once

#include "services/figures/Period.h"

#include <QWidget>

class DateRangeFields;
class QLabel;
class SegmentedControl;

/// The range that a report is about: one of the named periods, or days of the user's choice.
class ReportRange final : public QWidget {
    Q_OBJECT

public:
    explicit ReportRange(QWidget* parent = nullptr);

    /// Of a named period as it lies around today.
    DateRange range() const;

    /// What is wrong with the user's days, in Chinese; empty when nothing is.
    QString problem() const;

    /// Shows the days of the named period, which move with today.
    void refresh();

signals:
    void changed();

private:
    bool isCustom() const;
    void onPeriodChosen();

    SegmentedControl* m_periods;
    DateRangeFields* m_fields;
    QLabel* m_days;
};
