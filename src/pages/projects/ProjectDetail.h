#pragma once

#include "db/Project.h"

#include <QWidget>

class Banner;
class Card;
class ContractsCard;
class ProjectEntriesCard;
class ProjectVouchersCard;
class QLabel;

/// Everything about one project: its data, contracts, ledger entries and vouchers.
class ProjectDetail final : public QWidget {
    Q_OBJECT

public:
    explicit ProjectDetail(QWidget* parent = nullptr);

    void showProject(const Project& project);

signals:
    void editRequested();
    void deleteRequested();
    void viewInLedgerRequested();
    void projectRequested(qint64 projectId);
    void entryRequested(qint64 entryId);
    /// Something that belongs to the project was written.
    void changed();

private:
    QLayout* buildHeader();
    /// The data of the project in the colours of the present theme.
    void showInfo();

    Project m_project;
    QLabel* m_name = nullptr;
    QLabel* m_headline = nullptr;
    Banner* m_unreadable = nullptr;
    Card* m_infoCard = nullptr;
    QLabel* m_info = nullptr;
    ContractsCard* m_contracts = nullptr;
    ProjectEntriesCard* m_entries = nullptr;
    ProjectVouchersCard* m_vouchers = nullptr;
};
