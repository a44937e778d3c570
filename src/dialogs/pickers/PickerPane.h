#pragma once

#include <QWidget>

class EmptyState;
class PickerModel;
class QLabel;
class QLineEdit;
class QPushButton;
class QStackedWidget;
class QTableView;

/// A search above a table of boxes to tick. Space ticks the selected rows, a double click its row.
class PickerPane final : public QWidget {
    Q_OBJECT

public:
    struct Texts {
        QString tableName; // for assistive technology
        QString searchHint; // what the search looks at
        QString countPattern; // "已选 %1 笔"
        QString iconName; // of the empty state
        QString emptyTitle;
        QString emptyText; // when there are no records at all
        QString failureTitle; // in its place when they could not be read
        QString failure; // why; empty when they were read
    };

    /// Shows the model, which it takes over.
    PickerPane(PickerModel* model, const Texts& texts, QWidget* parent);

    QTableView* table() const { return m_table; }

    /// Brings the first ticked record into sight, so that a former choice is not overlooked.
    void showFirstTicked();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* buildHead(const Texts& texts);
    QTableView* buildTable(const Texts& texts);
    void connectSignals();
    void toggle(int row);
    void toggleSelected();
    void update();

    PickerModel* m_model;
    QString m_countPattern;
    QLineEdit* m_search = nullptr;
    QPushButton* m_tickAll = nullptr;
    QPushButton* m_untickAll = nullptr;
    QLabel* m_count = nullptr;
    QTableView* m_table = nullptr;
    EmptyState* m_noMatch = nullptr;
    EmptyState* m_noRecords = nullptr;
    QStackedWidget* m_stack = nullptr;
};
