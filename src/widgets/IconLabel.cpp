#include "widgets/IconLabel.h"

#include "theme/Icons.h"

#include <QPainter>

IconLabel::IconLabel(const QString& iconName, Token token, int size, QWidget* parent)
    : QWidget(parent)
    , m_iconName(iconName)
    , m_token(token)
    , m_size(size)
{
    setFixedSize(size, size);
}

void IconLabel::setIcon(const QString& iconName, Token token)
{
    m_iconName = iconName;
    m_token = token;
    update();
}

void IconLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.drawPixmap(0, 0, Icons::pixmap(m_iconName, m_token, m_size, devicePixelRatio()));
}
