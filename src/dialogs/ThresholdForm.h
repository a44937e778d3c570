#pragma once

#include "db/CompanyProfile.h"

#include <QObject>

class AmountField;
class FormRows;
class QSpinBox;
class QWidget;

/// The editors of the risk rules' three thresholds, laid out by whoever shows them.
class ThresholdForm final : public QObject {
    Q_OBJECT

public:
    explicit ThresholdForm(QWidget* parent);

    void addRows(FormRows* rows);

    void show(const CompanyProfile& profile);
    /// Whether the fields show the thresholds of this profile.
    bool shows(const CompanyProfile& profile) const;
    /// Tells what forbids storing the thresholds and leads to its field; false when nothing does.
    [[nodiscard]] bool showProblem();
    /// The given profile with the thresholds as they now stand.
    CompanyProfile edited(CompanyProfile profile) const;

private:
    AmountField* m_largeAmount = nullptr;
    QSpinBox* m_windowDays = nullptr;
    QSpinBox* m_count = nullptr;
};
