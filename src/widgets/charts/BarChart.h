#pragma once

#include "widgets/charts/ChartScale.h"
#include "widgets/charts/ChartView.h"

/// Money in and out per month or year as bars beside each other, with the net amount as a line.
class BarChart final : public ChartView {
    Q_OBJECT

public:
    struct Item {
        QString title; // "2026年3月", for the figures' box
        QString label; // "3月", below the bars
        QString group; // "2026年", below the labels of the first item that carries it
        ChartScale::Flow flow;
    };

    explicit BarChart(const QString& subject, QWidget* parent = nullptr);

    void setItems(const QList<Item>& items);
    const QList<Item>& items() const { return m_items; }

    int itemCount() const override { return static_cast<int>(m_items.size()); }
    QStringList itemLines(int item) const override;

    QSize sizeHint() const override { return { 640, 280 }; }
    QSize minimumSizeHint() const override { return { 240, sizeHint().height() }; }

protected:
    void paintItems(QPainter& painter) override;
    int itemAt(QPointF position) const override;
    QRectF itemRect(int item) const override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void layOut();
    void paintLegend(QPainter& painter) const;
    void paintAxis(QPainter& painter) const;
    void paintBars(QPainter& painter) const;
    void paintNet(QPainter& painter) const;
    void paintLabels(QPainter& painter) const;

    QList<Item> m_items;
    ChartScale::Axis m_axis;
    QRectF m_plot;
    QList<ChartScale::Group> m_groups;
};
