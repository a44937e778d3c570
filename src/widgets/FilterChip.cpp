#include "widgets/FilterChip.h"

#include "theme/Icons.h"
#include "theme/Theme.h"
#include "widgets/Painting.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int chipHeight = 28;
constexpr int sidePadding = 10;
constexpr int gap = 6;
constexpr int crossSize = 12;
constexpr int widestText = 320;

QFont chipFont(const QWidget* chip)
{
    return Painting::sized(chip->font(), 12);
}

} // namespace

FilterChip::FilterChip(const QString& text, QWidget* parent)
    : QAbstractButton(parent)
{
    setObjectName(u"FilterChip"_s);
    setText(text);
    // Set by hand: a name derived from the text would lose its ampersands.
    setAccessibleName(text + u" ✕"_s);
    setToolTip(u"<p style=\"white-space: pre-wrap\">%1</p>"_s.arg(
        u"取消此筛选：%1"_s.arg(text).toHtmlEscaped()));
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

QSize FilterChip::sizeHint() const
{
    // One more than measured: a width rounded down would shorten the text.
    const int textWidth = QFontMetrics(chipFont(this)).horizontalAdvance(text()) + 1;
    return { 2 * sidePadding + std::min(textWidth, widestText) + gap + crossSize, chipHeight };
}

void FilterChip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    Painting::drawSurface(
        painter, rect(), underMouse() ? Token::BgHover : Token::InfoBg, Token::InfoBorder);
    if (hasFocus())
        Painting::drawFocusRing(painter, rect());

    const QFont font = chipFont(this);
    const QRect content = rect().adjusted(sidePadding, 0, -sidePadding, 0);
    painter.setFont(font);
    painter.setPen(Theme::instance().color(Token::InfoText));
    painter.drawText(content, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        QFontMetrics(font).elidedText(text(), Qt::ElideMiddle, content.width() - gap - crossSize));
    painter.drawPixmap(content.right() - crossSize + 1, (height() - crossSize) / 2,
        Icons::pixmap(u"close", Token::InfoText, crossSize, devicePixelRatio()));
}

void FilterChip::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        click();
        return;
    default:
        QAbstractButton::keyPressEvent(event);
    }
}
