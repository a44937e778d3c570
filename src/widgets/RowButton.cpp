#include "widgets/RowButton.h"

#include "theme/Icons.h"
#include "theme/Theme.h"
#include "widgets/Painting.h"

#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int sidePadding = 8;
constexpr int topPadding = 8;
constexpr int iconPixels = 20;
constexpr int iconGap = 12;
constexpr int arrowSize = 16;
constexpr int titleHeight = 20;
constexpr int gap = 16;
constexpr int textGap = 2;
constexpr int titlePixels = 13;
constexpr int textPixels = 12;

} // namespace

RowButton::RowButton(const Content& content, QWidget* parent)
    : QAbstractButton(parent)
    , m_content(content)
{
    setObjectName(u"RowButton"_s);
    setText(content.title);
    setAccessibleName(content.name.isEmpty() ? content.title : content.name);
    QStringList rest { content.text, content.end, content.remark };
    rest.removeAll(QString());
    setAccessibleDescription(rest.join(u'，'));
    // Not of a fixed height: the layout would take that of the size hint for the least.
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
}

int RowButton::endWidth() const
{
    const int end
        = QFontMetrics(Painting::sized(font(), titlePixels, true)).horizontalAdvance(m_content.end);
    const int remark
        = QFontMetrics(Painting::sized(font(), textPixels)).horizontalAdvance(m_content.remark);
    return std::max(end, remark);
}

QRect RowButton::textRect(int width) const
{
    const int left = sidePadding + (m_content.icon.isEmpty() ? 0 : iconPixels + iconGap);
    const int end = endWidth() > 0 ? endWidth() + gap : 0;
    return { left, topPadding, std::max(1, width - left - end - arrowSize - 2 * sidePadding), 0 };
}

int RowButton::heightForWidth(int width) const
{
    const int oneLine = m_content.remark.isEmpty() ? 0 : titleHeight;
    int below = oneLine;
    if (!m_content.text.isEmpty()) {
        const QRect wrapped = QFontMetrics(Painting::sized(font(), textPixels))
                                  .boundingRect(QRect(0, 0, textRect(width).width(), 4000),
                                      Qt::TextWordWrap, m_content.text);
        below = std::max(below, wrapped.height() + textGap);
    }
    return 2 * topPadding + titleHeight + below;
}

QSize RowButton::sizeHint() const
{
    return { 320, heightForWidth(320) };
}

QSize RowButton::minimumSizeHint() const
{
    return { 160, 2 * topPadding + titleHeight };
}

void RowButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

void RowButton::paintEvent(QPaintEvent*)
{
    const Theme& theme = Theme::instance();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (underMouse() || isDown()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme.color(isDown() ? Token::BgSelected : Token::BgHover));
        painter.drawRoundedRect(rect(), Painting::radius, Painting::radius);
    }
    if (!m_content.icon.isEmpty())
        painter.drawPixmap(sidePadding, topPadding,
            Icons::pixmap(m_content.icon, m_content.iconColour, iconPixels, devicePixelRatio()));

    QRect line = textRect(width());
    line.setHeight(titleHeight);
    const QFont title = Painting::sized(font(), titlePixels, true);
    painter.setFont(title);
    painter.setPen(theme.color(Token::TextPrimary));
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
        QFontMetrics(title).elidedText(m_content.title, Qt::ElideRight, line.width()));
    painter.setFont(Painting::sized(font(), textPixels));
    painter.setPen(theme.color(Token::TextSecondary));
    painter.drawText(QRect(line.left(), line.bottom() + 1 + textGap, line.width(), height()),
        Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, m_content.text);
    paintEnd(painter);
    if (hasFocus())
        Painting::drawFocusRing(painter, rect());
}

void RowButton::paintEnd(QPainter& painter) const
{
    const Theme& theme = Theme::instance();
    const int arrowLeft = width() - sidePadding - arrowSize;
    painter.drawPixmap(arrowLeft, (height() - arrowSize) / 2,
        Icons::pixmap(u"chevron-right", Token::TextTertiary, arrowSize, devicePixelRatio()));
    QRect line(arrowLeft - sidePadding - endWidth(), topPadding, endWidth(), titleHeight);
    painter.setFont(Painting::sized(font(), titlePixels, true));
    painter.setPen(theme.color(m_content.endColour));
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, m_content.end);
    line.translate(0, titleHeight);
    painter.setFont(Painting::sized(font(), textPixels));
    painter.setPen(theme.color(m_content.remarkColour));
    painter.drawText(
        line, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, m_content.remark);
}
