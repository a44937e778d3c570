#include "widgets/charts/ChartView.h"

#include "theme/Theme.h"
#include "widgets/charts/ChartScale.h"
#include "widgets/Painting.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int boxPadding = 8;
constexpr int boxLineHeight = 18;
constexpr int textPixels = 12;

class ChartAccessible final : public QAccessibleWidget {
public:
    explicit ChartAccessible(ChartView* chart)
        : QAccessibleWidget(chart, QAccessible::Chart)
    {
    }

    QString text(QAccessible::Text type) const override
    {
        if (type != QAccessible::Value || chart()->markedItem() < 0)
            return QAccessibleWidget::text(type);
        return chart()->itemLines(chart()->markedItem()).join(u'，');
    }

    QStringList actionNames() const override
    {
        return QStringList { pressAction(), nextPageAction(), previousPageAction() }
        + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& name) override
    {
        if (name == pressAction())
            chart()->activateMarked();
        else if (name == nextPageAction())
            chart()->markNext();
        else if (name == previousPageAction())
            chart()->markPrevious();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    ChartView* chart() const { return static_cast<ChartView*>(object()); }
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object)
{
    auto* chart = qobject_cast<ChartView*>(object);
    return chart ? new ChartAccessible(chart) : nullptr;
}

void installAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(installed)
}

} // namespace

ChartView::ChartView(const QString& subject, Qt::Orientation arrangement, QWidget* parent)
    : QWidget(parent)
    , m_arrangement(arrangement)
    , m_emptyText(u"没有可显示的数据"_s)
{
    installAccessibility();
    setAccessibleName(subject);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ChartView::setEmptyText(const QString& text)
{
    m_emptyText = text;
    itemsChanged();
}

int ChartView::markedItem() const
{
    if (m_pointed >= 0)
        return m_pointed;
    return hasFocus() ? m_current : -1;
}

void ChartView::markNext()
{
    setCurrent(m_current + 1);
}

void ChartView::markPrevious()
{
    setCurrent(m_current - 1);
}

void ChartView::activateMarked()
{
    const int item = markedItem() >= 0 ? markedItem() : m_current;
    if (item >= 0)
        emit activated(item);
}

void ChartView::itemsChanged()
{
    m_pointed = m_pressed = -1;
    m_current = std::min(m_current, itemCount() - 1);
    if (hasFocus())
        markFirst();
    QStringList texts;
    for (int item = 0; item < itemCount(); ++item)
        texts += itemLines(item).join(u'，');
    setAccessibleDescription(texts.isEmpty() ? m_emptyText : texts.join(u'；'));
    // Nothing to mark is nothing to stop at.
    setFocusPolicy(texts.isEmpty() ? Qt::NoFocus : Qt::StrongFocus);
    unsetCursor();
    updateGeometry();
    update();
}

void ChartView::fillSeries(
    QPainter& painter, const QRectF& rect, Token colour, Qt::BrushStyle pattern)
{
    constexpr double smallestPatterned = 5; // a pattern needs room to be one
    const Theme& theme = Theme::instance();
    painter.fillRect(rect, theme.color(colour));
    if (pattern != Qt::SolidPattern && std::min(rect.width(), rect.height()) >= smallestPatterned)
        painter.fillRect(rect.adjusted(1, 1, -1, -1), QBrush(theme.color(Token::BgCard), pattern));
}

bool ChartView::event(QEvent* event)
{
    if (event->type() == QEvent::Leave)
        setPointed(-1);
    else if (event->type() == QEvent::FocusOut)
        update();
    return QWidget::event(event);
}

void ChartView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(Painting::sized(font(), textPixels));
    if (itemCount() == 0) {
        painter.setPen(Theme::instance().color(Token::TextSecondary));
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextWordWrap, m_emptyText);
        return;
    }
    paintItems(painter);
    if (hasFocus())
        Painting::drawFocusRing(painter, rect());
    if (markedItem() >= 0)
        paintReadout(painter);
}

void ChartView::paintReadout(QPainter& painter) const
{
    const QStringList lines = itemLines(markedItem());
    const QFont plain = Painting::sized(font(), textPixels);
    const QFont bold = Painting::sized(font(), textPixels, true);
    double width = QFontMetricsF(bold).horizontalAdvance(lines.first());
    for (const QString& line : lines)
        width = std::max(width, QFontMetricsF(plain).horizontalAdvance(line));
    const QSizeF size(
        width + 2 * boxPadding, boxLineHeight * static_cast<double>(lines.size()) + boxPadding);
    const QRectF box = ChartScale::besideItem(itemRect(markedItem()), size, rect());
    Painting::drawSurface(painter, box, Token::BgTooltip, Token::BgTooltip);
    painter.setPen(Theme::instance().color(Token::TextTooltip));
    QRectF line(box.left() + boxPadding, box.top() + boxPadding / 2.0, width + 1, boxLineHeight);
    for (const QString& text : lines) {
        painter.setFont(&text == &lines.first() ? bold : plain);
        painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
        line.translate(0, boxLineHeight);
    }
}

void ChartView::setPointed(int item)
{
    if (item == m_pointed)
        return;
    m_pointed = item;
    setCursor(item >= 0 ? Qt::PointingHandCursor : Qt::ArrowCursor);
    update();
}

void ChartView::setCurrent(int item)
{
    if (itemCount() > 0)
        m_current = std::clamp(item, 0, itemCount() - 1);
    m_pointed = -1;
    update();
}

void ChartView::mouseMoveEvent(QMouseEvent* event)
{
    setPointed(itemAt(event->position()));
}

void ChartView::mousePressEvent(QMouseEvent* event)
{
    m_pressed = event->button() == Qt::LeftButton ? itemAt(event->position()) : -1;
}

void ChartView::mouseReleaseEvent(QMouseEvent* event)
{
    const int item = itemAt(event->position());
    const bool isClick = event->button() == Qt::LeftButton && item >= 0 && item == m_pressed;
    m_pressed = -1;
    if (!isClick)
        return;
    m_current = item;
    emit activated(item);
}

void ChartView::keyPressEvent(QKeyEvent* event)
{
    const bool isVertical = m_arrangement == Qt::Vertical;
    const int key = event->key();
    if (key == Qt::Key_Right || (isVertical && key == Qt::Key_Down))
        markNext();
    else if (key == Qt::Key_Left || (isVertical && key == Qt::Key_Up))
        markPrevious();
    else if (key == Qt::Key_Home)
        setCurrent(0);
    else if (key == Qt::Key_End)
        setCurrent(itemCount() - 1);
    else if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space)
        activateMarked();
    else
        QWidget::keyPressEvent(event);
}

void ChartView::focusInEvent(QFocusEvent* event)
{
    markFirst();
    QWidget::focusInEvent(event);
    update();
}

void ChartView::markFirst()
{
    // What happened last comes last and is looked for first in a row of months.
    if (m_current < 0 && itemCount() > 0)
        m_current = m_arrangement == Qt::Horizontal ? itemCount() - 1 : 0;
}
