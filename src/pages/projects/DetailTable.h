#pragma once

#include "widgets/ColumnWidths.h"

#include <QList>
#include <QTableView>

/// A table among the details of a record: as high as its rows, up to a number after which it
/// scrolls by itself, and out of sight without any. The columns share its room until the user sets
/// a width; from then on the widths stay as they are. The current row survives a reload.
class DetailTable final : public QTableView {
    Q_OBJECT

public:
    DetailTable(const QString& accessibleName, QAbstractItemModel* model,
        const QList<ColumnWidths::Width>& widths, int mostRows, QWidget* parent);

    /// The number of the record in a row is its `Qt::UserRole`.
    qint64 currentId() const;
    /// Runs `reload`, which resets the model, and makes the same record the current one again.
    template <typename Reload> void keepingCurrent(const Reload& reload)
    {
        const qint64 id = currentId();
        reload();
        restore(id);
    }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void restore(qint64 id);
    void fit();

    const QList<ColumnWidths::Width> m_widths;
    const int m_mostRows;
    bool m_fitting = false;
    bool m_setByUser = false;
};
