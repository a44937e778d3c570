#include "widgets/SplashScreen.h"

#include "theme/Logo.h"
#include "theme/Theme.h"
#include "widgets/Painting.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize splashSize { 440, 272 };
constexpr int logoSize = 88;
constexpr int logoTop = 48;

void drawCentred(
    QPainter& painter, const QRect& line, const QFont& font, Token color, const QString& text)
{
    painter.setFont(font);
    painter.setPen(Theme::instance().color(color));
    painter.drawText(line, Qt::AlignCenter, text);
}

} // namespace

SplashScreen::SplashScreen(QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint)
{
    setObjectName(u"SplashScreen"_s);
    setWindowTitle(u"Brixa"_s);
    setWindowIcon(Logo::icon());
    setAccessibleName(u"Brixa 正在启动"_s);
    setFixedSize(splashSize);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &SplashScreen::finish);
}

void SplashScreen::start()
{
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        QRect frame(QPoint(), splashSize);
        frame.moveCenter(screen->availableGeometry().center());
        move(frame.topLeft());
    }
    show();
    repaint();
    m_timer.start(shownMs);
}

void SplashScreen::closeEvent(QCloseEvent* event)
{
    event->accept();
    finish();
}

void SplashScreen::keyPressEvent(QKeyEvent*)
{
    finish();
}

void SplashScreen::mousePressEvent(QMouseEvent*)
{
    finish();
}

void SplashScreen::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), Theme::instance().color(Token::BgCard));
    painter.setPen(Theme::instance().color(Token::Border));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5));
    painter.drawPixmap(
        (width() - logoSize) / 2, logoTop, Logo::pixmap(logoSize, devicePixelRatio()));
    QRect line(0, logoTop + logoSize + 16, width(), 40);
    drawCentred(painter, line, Painting::sized(font(), 28, true), Token::TextPrimary, u"Brixa"_s);
    line.translate(0, line.height());
    line.setHeight(24);
    drawCentred(painter, line, Painting::sized(font(), 13), Token::TextSecondary,
        u"一人公司财产独立存证台账"_s);
    line.translate(0, line.height());
    drawCentred(painter, line, Painting::sized(font(), 12), Token::TextTertiary,
        u"版本 %1"_s.arg(QCoreApplication::applicationVersion()));
}

void SplashScreen::finish()
{
    if (m_finished)
        return;
    // Set before closing, because closing comes back here.
    m_finished = true;
    m_timer.stop();
    close();
    emit finished();
}
