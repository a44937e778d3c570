#pragma once

#include <QStyledItemDelegate>

/// Draws the cells of a table: side padding, and the model's own text colour on selected rows
/// too. Tool tips are plain text; a text that is cut off is whole in the tool tip. Delegates of
/// single columns derive from it.
class RowDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    static constexpr int padding = 8;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
        const QModelIndex& index) override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

    /// The ground of a cell alone: selection and tint, for cells with a content of their own.
    static void paintGround(QPainter* painter, const QStyleOptionViewItem& option);
};
