#pragma once

#include "db/Transaction.h"

#include <QSet>
#include <QWidget>

class FundEntryModel;
class QCheckBox;
class QLabel;
class QStackedWidget;
class QTableView;

/// The choice of the entries that a fund decision covers: filters, a table with ticks, and what
/// the ticked ones add up to.
class FundEntryPicker final : public QWidget {
    Q_OBJECT

public:
    explicit FundEntryPicker(QWidget* parent = nullptr);

    /// Reads the ledger again; ticks stay. False when it cannot be read. What the user should
    /// know about it goes to `told`, in Chinese.
    [[nodiscard]] bool reload(QString* told);
    const QList<Transaction>& ledger() const;

    Direction direction() const { return m_direction; }
    void setDirection(Direction direction);

    /// The ticked entries of the direction, oldest first.
    QList<Transaction> chosen() const;
    /// Of both directions.
    const QSet<qint64>& ticked() const;
    void setTicked(const QSet<qint64>& ids);

signals:
    void changed();

private:
    QLayout* buildFilters();
    void buildTable();
    void updateView();
    void onTicksChanged();
    void showTotal();
    void toggleSelectedRows();

    Direction m_direction = Direction::In;
    FundEntryModel* m_model;
    QCheckBox* m_ownerFlows;
    QCheckBox* m_uncovered;
    QCheckBox* m_all;
    QStackedWidget* m_stack;
    QTableView* m_table;
    QLabel* m_total;
    QLabel* m_capitals;
};
