#include "widgets/NavButton.h"

#include "theme/Icons.h"
#include "theme/Theme.h"
#include "widgets/Painting.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int buttonWidth = 200;
constexpr int buttonHeight = 44;
constexpr int sideMargin = 8;
constexpr int topMargin = 2;
constexpr int glyphSize = 20;
constexpr int iconLeft = 24;
constexpr int textLeft = iconLeft + glyphSize + 12;
constexpr int barWidth = 4;
constexpr int barHeight = 20;

QRect groundOf(const QRect& button)
{
    return button.adjusted(sideMargin, topMargin, -sideMargin, -topMargin);
}

} // namespace

NavButton::NavButton(const QString& iconName, const QString& label, QWidget* parent)
    : QAbstractButton(parent)
    , m_iconName(iconName)
{
    setObjectName(u"NavItem"_s);
    setText(label);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

QSize NavButton::sizeHint() const
{
    return { buttonWidth, buttonHeight };
}

void NavButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintGround(painter);
    const Token ink = isChecked() ? Token::TextPrimary : Token::TextSecondary;
    painter.drawPixmap(iconLeft, (height() - glyphSize) / 2,
        Icons::pixmap(m_iconName, isChecked() ? Token::Link : ink, glyphSize, devicePixelRatio()));
    painter.setFont(Painting::sized(font(), 14, isChecked()));
    painter.setPen(Theme::instance().color(ink));
    painter.drawText(rect().adjusted(textLeft, 0, -sideMargin, 0),
        Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text());
    if (hasFocus())
        Painting::drawFocusRing(painter, groundOf(rect()));
}

void NavButton::paintGround(QPainter& painter) const
{
    if (!isChecked() && !underMouse() && !isDown())
        return;
    const QRect ground = groundOf(rect());
    painter.setPen(Qt::NoPen);
    painter.setBrush(Theme::instance().color(isChecked() ? Token::BgSelected : Token::BgHover));
    painter.drawRoundedRect(ground, Painting::radius, Painting::radius);
    if (!isChecked())
        return;
    painter.setBrush(Theme::instance().color(Token::Link));
    painter.drawRoundedRect(
        QRectF(ground.left(), (height() - barHeight) / 2.0, barWidth, barHeight), 2, 2);
}
