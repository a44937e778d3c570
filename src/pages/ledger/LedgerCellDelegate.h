#pragma once

#include "widgets/RowDelegate.h"

#include <QPersistentModelIndex>

#include <optional>

/// The cells of the ledger that do something: the number of vouchers and the buttons of a row,
/// which share their cell in equal parts.
class LedgerCellDelegate final : public RowDelegate {
    Q_OBJECT

public:
    enum class Action { Edit, Document, Delete, Vouchers };

    using RowDelegate::RowDelegate;

    static constexpr int actionsWidth = 3 * 28;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
        const QModelIndex& index) override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
        const QModelIndex& index) override;

signals:
    void editRequested(qint64 id);
    void documentRequested(qint64 id);
    void deleteRequested(qint64 id);
    void vouchersRequested(qint64 id);

private:
    void paintActions(
        QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paintVouchers(
        QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void setHovered(const QWidget* view, const QModelIndex& index, std::optional<Action> action);
    void request(Action action, qint64 id);

    QPersistentModelIndex m_hovered;
    std::optional<Action> m_hoveredAction;
};
