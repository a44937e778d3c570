#pragma once

#include <QWidget>

class Card;
class DetailTable;
class ProjectEntriesModel;
class QLabel;

/// The ledger entries of a project and what they add up to.
class ProjectEntriesCard final : public QWidget {
    Q_OBJECT

public:
    explicit ProjectEntriesCard(QWidget* parent = nullptr);

    /// Shows the entries of a project; the reason in Chinese when they cannot be read.
    [[nodiscard]] QString showProject(qint64 projectId);

signals:
    void viewInLedgerRequested();
    /// An entry was changed.
    void changed();

private:
    void buildTable();
    void onEdit(qint64 entryId);

    Card* m_card;
    ProjectEntriesModel* m_model;
    DetailTable* m_table = nullptr;
    QLabel* m_totals;
};
