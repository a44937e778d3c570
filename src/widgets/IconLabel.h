#pragma once

#include "theme/ThemeTokens.h"

#include <QString>
#include <QWidget>

/// A line icon that says nothing by itself and follows the theme.
class IconLabel final : public QWidget {
    Q_OBJECT

public:
    IconLabel(const QString& iconName, Token token, int size, QWidget* parent = nullptr);

    void setIcon(const QString& iconName, Token token);

    QSize sizeHint() const override { return { m_size, m_size }; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_iconName;
    Token m_token;
    int m_size;
};
