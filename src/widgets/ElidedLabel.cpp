#include "widgets/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

ElidedLabel::ElidedLabel(QWidget* parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

QSize ElidedLabel::minimumSizeHint() const
{
    return { fontMetrics().averageCharWidth() * 8, QLabel::minimumSizeHint().height() };
}

void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, width());
    // A tool tip takes for markup what looks like it.
    const QString whole = Qt::mightBeRichText(text()) ? Qt::convertFromPlainText(text()) : text();
    setToolTip(shown == text() ? QString() : whole);
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(),
        isEnabled(), shown, foregroundRole());
}

void ElidedLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    update();
}
