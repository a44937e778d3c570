#include "widgets/Toast.h"

#include "core/TextRules.h"
#include "theme/Icons.h"
#include "theme/Theme.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 20;
constexpr int iconLeft = 14;
constexpr int gap = 8;
constexpr int bottomMargin = 48; // clear of the status bar
constexpr int sideMargin = 32;
constexpr int widestToast = 560;

// Who just stopped reading still gets a moment.
constexpr int shownAfterHoverMs = 1500;

// A toast is dark in the light theme and light in the dark one, so its icon takes the colour that
// the other theme uses.
QColor iconColorOf(BannerKind kind)
{
    const bool light = Theme::instance().mode() == ThemeMode::Light;
    return tokenColor(textTokenOf(kind), light ? ThemeMode::Dark : ThemeMode::Light);
}

// Oldest first.
QList<Toast*> visibleToasts(const QWidget* window)
{
    QList<Toast*> toasts = window->findChildren<Toast*>(QString(), Qt::FindDirectChildrenOnly);
    toasts.removeIf([](const Toast* toast) { return toast->isHidden(); });
    return toasts;
}

QSize sizeFor(const Toast* toast, int windowWidth)
{
    const int limit = std::min(widestToast, windowWidth - 2 * sideMargin);
    const int width = std::min(toast->sizeHint().width(), limit);
    return { width, toast->heightForWidth(width) };
}

// The newest lies at the bottom.
void layOut(QWidget* window)
{
    QList<Toast*> toasts = visibleToasts(window);
    int bottom = window->height() - bottomMargin;
    while (!toasts.isEmpty()) {
        Toast* toast = toasts.takeLast();
        const QSize size = sizeFor(toast, window->width());
        toast->setGeometry(
            { QPoint((window->width() - size.width()) / 2, bottom - size.height()), size });
        bottom -= size.height() + gap;
    }
}

} // namespace

Toast::Toast(QWidget* window, const QString& text, BannerKind kind)
    : QLabel(window)
    , m_kind(kind)
{
    setObjectName(u"Toast"_s);
    setTextFormat(Qt::PlainText);
    setWordWrap(text.size() > 30);
    setFocusPolicy(Qt::NoFocus);
    setText(text);
    setAccessibleName(u"%1：%2"_s.arg(labelOf(kind), text));
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Toast::dismiss);
    window->installEventFilter(this);
}

void Toast::show(QWidget* window, const QString& text, BannerKind kind)
{
    QWidget* host = window->window();
    const QList<Toast*> earlier = visibleToasts(host);
    for (qsizetype i = 0; i + stackSize <= earlier.size(); ++i)
        earlier.at(i)->dismiss();
    auto* toast = new Toast(host, TextRules::withoutDirectionMarks(text), kind);
    toast->ensurePolished();
    toast->QLabel::show();
    toast->raise();
    layOut(host);
    toast->m_timer.start(shownMs);
}

bool Toast::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && watched == parent())
        layOut(parentWidget());
    return QLabel::eventFilter(watched, event);
}

void Toast::enterEvent(QEnterEvent* event)
{
    m_timer.stop();
    QLabel::enterEvent(event);
}

void Toast::leaveEvent(QEvent* event)
{
    m_timer.start(shownAfterHoverMs);
    QLabel::leaveEvent(event);
}

void Toast::paintEvent(QPaintEvent* event)
{
    QLabel::paintEvent(event);
    QPainter painter(this);
    painter.drawPixmap(iconLeft, (height() - iconSize) / 2,
        Icons::pixmap(codeOf(m_kind), iconColorOf(m_kind), iconSize, devicePixelRatio()));
}

void Toast::dismiss()
{
    m_timer.stop();
    hide();
    layOut(parentWidget());
    deleteLater();
}
