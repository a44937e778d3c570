#pragma once

#include "services/figures/Report.h"

#include <QTableView>

class FigureModel;

/// A small table of figures in its whole height, so that the page scrolls and not the table. The
/// total is set apart by weight. A double click or Enter activates a row.
class FigureTableView final : public QTableView {
    Q_OBJECT

public:
    explicit FigureTableView(const QString& accessibleName, QWidget* parent = nullptr);

    void setTable(const FigureTable& table);

signals:
    /// Also for the total, as the last row.
    void rowActivated(int row);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void fitColumns();

    FigureModel* m_model;
};
