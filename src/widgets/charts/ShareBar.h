#pragma once

#include "widgets/charts/ChartView.h"

/// How a whole divides into parts: one bar, and below it what each part is. Parts without
/// anything in them are named too.
class ShareBar final : public ChartView {
    Q_OBJECT

public:
    struct Item {
        QString label;
        qint64 value = 0; // from 0 on
        QString valueText; // "12 笔　3.4%"
        Token colour = Token::Primary;
        Qt::BrushStyle pattern = Qt::SolidPattern;
    };

    explicit ShareBar(const QString& subject, QWidget* parent = nullptr);

    void setItems(const QList<Item>& items);
    const QList<Item>& items() const { return m_items; }

    int itemCount() const override { return static_cast<int>(m_items.size()); }
    QStringList itemLines(int item) const override;

    QSize sizeHint() const override { return { 480, 112 }; }
    QSize minimumSizeHint() const override { return { 240, sizeHint().height() }; }

protected:
    void paintItems(QPainter& painter) override;
    int itemAt(QPointF position) const override;
    QRectF itemRect(int item) const override;

private:
    QList<QRectF> parts() const;
    QRectF legendRect(int item) const;

    QList<Item> m_items;
};
