#pragma once

#include <QHeaderView>

/// The head of a table. Titles of right-aligned columns end where the cells below them end: the
/// style keeps room for the sort arrow on every column, this one only on the column that has it.
class TableHeader final : public QHeaderView {
    Q_OBJECT

public:
    explicit TableHeader(QWidget* parent = nullptr);

protected:
    void initStyleOptionForIndex(QStyleOptionHeader* option, int logicalIndex) const override;
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
};
