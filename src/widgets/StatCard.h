#pragma once

#include "theme/ThemeTokens.h"

#include <QAbstractButton>

/// One figure with its title and an explaining foot line. A card that leads somewhere is a button
/// as a whole; any other takes no focus, offers no action and emits nothing.
class StatCard final : public QAbstractButton {
    Q_OBJECT

public:
    explicit StatCard(const QString& title, QWidget* parent = nullptr);

    QString value() const { return m_value; }
    void setValue(const QString& value);

    QString foot() const { return m_foot; }
    void setFoot(const QString& foot);

    /// The colour of the left edge.
    void setEdge(Token edge);

    bool isNavigable() const { return m_navigable; }
    void setNavigable(bool navigable);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    bool hitButton(const QPoint& position) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void paintSurface(QPainter& painter) const;
    void paintTexts(QPainter& painter) const;
    void updateAccessibleTexts();

    QString m_value;
    QString m_foot;
    Token m_edge = Token::Primary;
    bool m_navigable = false;
};
