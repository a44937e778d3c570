#include "widgets/StatCard.h"

#include "theme/Icons.h"
#include "theme/Theme.h"
#include "widgets/Painting.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

using namespace Qt::StringLiterals;

namespace {

constexpr int padding = 16;
constexpr int edgeWidth = 4;
constexpr int titleHeight = 20;
constexpr int valueHeight = 36;
constexpr int footHeight = 18;
constexpr int gap = 4;
constexpr int arrowSize = 16;
constexpr int valuePixels = 24;
constexpr int smallestValuePixels = 16;

// A figure without a target must not promise assistive technology a press.
class StatCardAccessible final : public QAccessibleWidget {
public:
    explicit StatCardAccessible(StatCard* card)
        : QAccessibleWidget(card)
    {
    }

    QAccessible::Role role() const override
    {
        return card()->isNavigable() ? QAccessible::Button : QAccessible::StaticText;
    }

    QString text(QAccessible::Text type) const override
    {
        return type == QAccessible::Value ? card()->value() : QAccessibleWidget::text(type);
    }

    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (card()->isNavigable() && card()->isEnabled())
            names.prepend(pressAction());
        return names;
    }

    void doAction(const QString& name) override
    {
        if (name == pressAction() && card()->isNavigable())
            card()->click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    StatCard* card() const { return static_cast<StatCard*>(object()); }
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object)
{
    auto* card = qobject_cast<StatCard*>(object);
    return card ? new StatCardAccessible(card) : nullptr;
}

void installAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(installed)
}

// A long amount shrinks before it is cut: half a figure would be a wrong one.
QFont fittedValueFont(const QFont& base, const QString& value, int width)
{
    int pixels = valuePixels;
    QFont font = Painting::sized(base, pixels, true);
    while (pixels > smallestValuePixels && QFontMetrics(font).horizontalAdvance(value) > width)
        font = Painting::sized(base, --pixels, true);
    return font;
}

void drawLine(
    QPainter& painter, const QRect& rect, const QFont& font, Token color, const QString& text)
{
    painter.setFont(font);
    painter.setPen(Theme::instance().color(color));
    painter.drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        QFontMetrics(font).elidedText(text, Qt::ElideRight, rect.width()));
}

} // namespace

StatCard::StatCard(const QString& title, QWidget* parent)
    : QAbstractButton(parent)
{
    installAccessibility();
    setObjectName(u"StatCard"_s);
    setText(title);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
    setFocusPolicy(Qt::NoFocus);
    updateAccessibleTexts();
}

void StatCard::setValue(const QString& value)
{
    m_value = value;
    updateAccessibleTexts();
    update();
}

void StatCard::setFoot(const QString& foot)
{
    m_foot = foot;
    updateAccessibleTexts();
    update();
}

void StatCard::setEdge(Token edge)
{
    m_edge = edge;
    update();
}

void StatCard::setNavigable(bool navigable)
{
    m_navigable = navigable;
    setFocusPolicy(navigable ? Qt::StrongFocus : Qt::NoFocus);
    setCursor(navigable ? Qt::PointingHandCursor : Qt::ArrowCursor);
    update();
}

QSize StatCard::sizeHint() const
{
    return { 220, 2 * padding + titleHeight + valueHeight + footHeight + 2 * gap };
}

QSize StatCard::minimumSizeHint() const
{
    return { 150, sizeHint().height() };
}

bool StatCard::event(QEvent* event)
{
    // A card that is no button lets the click pass to what lies behind it.
    const bool pressing = event->type() == QEvent::MouseButtonPress
        || event->type() == QEvent::MouseButtonRelease || event->type() == QEvent::KeyPress
        || event->type() == QEvent::KeyRelease;
    if (!m_navigable && pressing) {
        event->ignore();
        return false;
    }
    return QAbstractButton::event(event);
}

bool StatCard::hitButton(const QPoint& position) const
{
    return m_navigable && rect().contains(position);
}

void StatCard::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void StatCard::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintSurface(painter);
    paintTexts(painter);
    if (hasFocus())
        Painting::drawFocusRing(painter, rect());
}

void StatCard::paintSurface(QPainter& painter) const
{
    const bool lit = m_navigable && (underMouse() || isDown());
    Painting::drawSurface(painter, rect(), isDown() ? Token::BgHover : Token::BgCard,
        lit ? Token::FocusRing : Token::Border);
    QPainterPath outline;
    outline.addRoundedRect(rect(), Painting::radius, Painting::radius);
    painter.save();
    painter.setClipRect(QRect(0, 0, edgeWidth, height()));
    painter.fillPath(outline, Theme::instance().color(m_edge));
    painter.restore();
    if (m_navigable) {
        painter.drawPixmap(width() - padding - arrowSize + 4, padding + 2,
            Icons::pixmap(u"chevron-right", Token::TextTertiary, arrowSize, devicePixelRatio()));
    }
}

void StatCard::paintTexts(QPainter& painter) const
{
    QRect line = rect().adjusted(padding + edgeWidth, padding, -padding, -padding);
    line.setHeight(titleHeight);
    drawLine(painter, m_navigable ? line.adjusted(0, 0, -arrowSize, 0) : line,
        Painting::sized(font(), 13), Token::TextSecondary, text());
    line = QRect(line.left(), line.bottom() + 1 + gap, line.width(), valueHeight);
    drawLine(
        painter, line, fittedValueFont(font(), m_value, line.width()), Token::TextPrimary, m_value);
    line = QRect(line.left(), line.bottom() + 1 + gap, line.width(), footHeight);
    drawLine(painter, line, Painting::sized(font(), 12), Token::TextTertiary, m_foot);
}

void StatCard::updateAccessibleTexts()
{
    setAccessibleName(m_value.isEmpty() ? text() : u"%1 %2"_s.arg(text(), m_value));
    setAccessibleDescription(m_foot);
    setToolTip(m_foot);
}
