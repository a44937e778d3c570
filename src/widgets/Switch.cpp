#include "widgets/Switch.h"

#include "theme/Theme.h"
#include "widgets/Painting.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace {

constexpr int ringWidth = 4; // room around the track for the focus ring
constexpr int trackWidth = 40;
constexpr int trackHeight = 22;
constexpr int knobMargin = 3;
constexpr int gap = 8;

} // namespace

Switch::Switch(const QString& text, QWidget* parent)
    : QAbstractButton(parent)
{
    setObjectName(u"Switch"_s);
    setText(text);
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    connect(this, &QAbstractButton::toggled, this, &Switch::updateAccessibleState);
    updateAccessibleState();
}

QSize Switch::sizeHint() const
{
    const int label = text().isEmpty() ? 0 : gap + fontMetrics().horizontalAdvance(text());
    return { 2 * ringWidth + trackWidth + label, 2 * ringWidth + trackHeight };
}

void Switch::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF track(ringWidth, (height() - trackHeight) / 2.0, trackWidth, trackHeight);
    paintTrack(painter, track);
    if (hasFocus()) {
        const QRectF ring = track.adjusted(-ringWidth, -ringWidth, ringWidth, ringWidth);
        Painting::drawFocusRing(painter, ring, ring.height() / 2 - 1);
    }
    painter.setPen(Theme::instance().color(isEnabled() ? Token::TextPrimary : Token::TextDisabled));
    painter.drawText(rect().adjusted(2 * ringWidth + trackWidth + gap - ringWidth, 0, 0, 0),
        Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text());
}

void Switch::paintTrack(QPainter& painter, const QRectF& track) const
{
    const Theme& theme = Theme::instance();
    const Token on = underMouse() ? Token::PrimaryHover : Token::Primary;
    const Token off = underMouse() ? Token::TextSecondary : Token::BorderStrong;
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.color(!isEnabled() ? Token::Border : isChecked() ? on : off));
    painter.drawRoundedRect(track, track.height() / 2, track.height() / 2);
    const qreal knob = track.height() - 2 * knobMargin;
    const qreal left = isChecked() ? track.right() - knobMargin - knob : track.left() + knobMargin;
    painter.setBrush(theme.color(isEnabled() ? Token::TextOnPrimary : Token::BgInputDisabled));
    painter.drawEllipse(QRectF(left, track.top() + knobMargin, knob, knob));
}

void Switch::updateAccessibleState()
{
    setAccessibleDescription(isChecked() ? u"开"_s : u"关"_s);
}
