#pragma once

#include "pages/settings/SettingsCard.h"
#include "selfcheck/SelfCheckReport.h"

class QGridLayout;
class QPushButton;

/// Runs the self-check, shows what it found, and leads to the log.
class SelfCheckCard final : public SettingsCard {
    Q_OBJECT

public:
    explicit SelfCheckCard(QWidget* parent = nullptr);

    void refresh() override;

private:
    void onRun();
    void onToggleDetails();
    void showReport(const SelfCheckReport& report);
    void showDetails(const QList<SelfCheckResult>& suites);
    void showLogSize();

    QLabel* m_state;
    QWidget* m_list;
    QGridLayout* m_rows;
    QPushButton* m_details;
    QLabel* m_log;
};
