#pragma once

#include "theme/ThemeTokens.h"

#include <QStringList>
#include <QWidget>

/// What the charts share: an item is marked by the pointer or, while the chart has the keyboard,
/// by the arrow keys, its figures then show in a box beside it; a click or Enter activates it.
/// Assistive technology reads all figures in the description and the marked item as the value.
class ChartView : public QWidget {
    Q_OBJECT

public:
    /// What stands in the place of a chart without items.
    void setEmptyText(const QString& text);

    /// -1 when none is marked.
    int markedItem() const;

    virtual int itemCount() const = 0;
    /// What the item is, and its figures, a line each.
    virtual QStringList itemLines(int item) const = 0;

    void markNext();
    void markPrevious();
    void activateMarked();

signals:
    void activated(int item);

protected:
    /// The arrow keys follow the way in which the items are arranged; Left and Right always work.
    ChartView(const QString& subject, Qt::Orientation arrangement, QWidget* parent);

    virtual void paintItems(QPainter& painter) = 0;
    /// The item at a position; -1 for none.
    virtual int itemAt(QPointF position) const = 0;
    /// Where an item is painted.
    virtual QRectF itemRect(int item) const = 0;

    /// To be called by every change of the items.
    void itemsChanged();

    /// Fills with a series' colour; a pattern tells series apart where colours do not.
    static void fillSeries(
        QPainter& painter, const QRectF& rect, Token colour, Qt::BrushStyle pattern);

    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void paintReadout(QPainter& painter) const;
    void setPointed(int item);
    void setCurrent(int item);
    void markFirst();

    const Qt::Orientation m_arrangement;
    QString m_emptyText;
    int m_pointed = -1; // by the pointer
    int m_current = -1; // by the keyboard
    int m_pressed = -1;
};
