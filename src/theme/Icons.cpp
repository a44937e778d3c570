#include "theme/Icons.h"

#include "theme/SvgPainter.h"
#include "theme/Theme.h"

#include <QIconEngine>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace Icons {

namespace {

constexpr int smallestFineIcon = 32;

QString pathOf(QStringView name)
{
    return u":/brixa/icons/%1.svg"_s.arg(name);
}

// Looks the colour up when it paints, so an icon that was set once follows the theme.
class LineIconEngine final : public QIconEngine {
public:
    LineIconEngine(QStringView name, Token token)
        : m_path(pathOf(name))
        , m_token(token)
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal dpr = painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, scaledPixmap(rect.size() * dpr, mode, state, dpr));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1.0);
    }

    // `size` counts device pixels already.
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal scale) override
    {
        const Token token = mode == QIcon::Disabled ? Token::TextDisabled : m_token;
        QPixmap result = SvgPainter::render(m_path, Theme::instance().color(token), size);
        result.setDevicePixelRatio(scale);
        return result;
    }

    QIconEngine* clone() const override { return new LineIconEngine(*this); }
    QString key() const override { return u"brixa-line-icon"_s; }

private:
    QString m_path;
    Token m_token;
};

} // namespace

QIcon icon(QStringView name, Token token)
{
    return QIcon(new LineIconEngine(name, token));
}

QPixmap pixmap(QStringView name, Token token, int size, qreal dpr)
{
    return pixmap(name, Theme::instance().color(token), size, dpr);
}

QPixmap pixmap(QStringView name, const QColor& color, int size, qreal dpr)
{
    const QSize deviceSize = QSizeF(size * dpr, size * dpr).toSize();
    QPixmap result = SvgPainter::render(pathOf(name), color, deviceSize, size >= smallestFineIcon);
    result.setDevicePixelRatio(dpr);
    return result;
}

} // namespace Icons
