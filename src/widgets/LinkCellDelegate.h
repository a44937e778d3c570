#pragma once

#include "widgets/RowDelegate.h"

#include <QPersistentModelIndex>
#include <QStringList>

class QAbstractItemView;

/// Draws a cell of link-style buttons that share it in equal parts, and tells which of them was
/// clicked. The same operations belong on keys and into the row's menu.
class LinkCellDelegate final : public RowDelegate {
    Q_OBJECT

public:
    /// Serves one column of the view; the caller sets it there.
    explicit LinkCellDelegate(QAbstractItemView* view);

    /// The texts of the buttons, in order.
    static constexpr int ActionsRole = Qt::UserRole + 100;

    /// What a model answers for such a cell, by role; assistive technology reads the buttons in
    /// order.
    static QVariant cellData(const QStringList& actions, int role);

    /// The width in which these buttons are not cramped.
    static int widthFor(const QAbstractItemView* view, const QStringList& actions);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void triggered(const QModelIndex& index, int action);

private:
    struct Button {
        QPersistentModelIndex index;
        int action = -1;

        bool operator==(const Button&) const = default;
    };

    Button buttonAt(const QPoint& position) const;
    void setHovered(const Button& button);

    QAbstractItemView* m_view;
    QWidget* m_viewport;
    Button m_hovered;
    Button m_pressed;
};
