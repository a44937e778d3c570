#pragma once

#include <QAbstractButton>

/// An entry of the navigation bar; the checked one is the current page.
class NavButton final : public QAbstractButton {
    Q_OBJECT

public:
    NavButton(const QString& iconName, const QString& label, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintGround(QPainter& painter) const;

    QString m_iconName;
};
