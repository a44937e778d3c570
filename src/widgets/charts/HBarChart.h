#pragma once

#include "widgets/charts/ChartView.h"

/// Amounts beside each other as bars from left to right, each with its name and figure.
class HBarChart final : public ChartView {
    Q_OBJECT

public:
    struct Item {
        QString label;
        qint64 value = 0; // from 0 on
        QString valueText; // "1,200.00"
        QStringList figures; // more lines for the figures' box
        Token colour = Token::Primary;
    };

    explicit HBarChart(const QString& subject, QWidget* parent = nullptr);

    void setItems(const QList<Item>& items);
    const QList<Item>& items() const { return m_items; }

    int itemCount() const override { return static_cast<int>(m_items.size()); }
    QStringList itemLines(int item) const override;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return { 240, sizeHint().height() }; }

protected:
    void paintItems(QPainter& painter) override;
    int itemAt(QPointF position) const override;
    QRectF itemRect(int item) const override;

private:
    /// The columns of names and figures leave this to the bars.
    QRectF plot() const;
    QRectF rowRect(int item) const;
    QList<QRectF> bars() const;

    QList<Item> m_items;
};
