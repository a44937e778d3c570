#pragma once

#include "theme/ThemeTokens.h"

#include <QAbstractButton>

/// A row of a list that leads somewhere: an icon, a title, a text that wraps below it, and at the
/// end a figure with a remark. The whole row is one button.
class RowButton final : public QAbstractButton {
    Q_OBJECT

public:
    struct Content {
        QString icon; // none when empty
        Token iconColour = Token::TextSecondary;
        QString title;
        QString text;
        QString end;
        Token endColour = Token::TextPrimary;
        QString remark; // below the end
        Token remarkColour = Token::TextSecondary;
        QString name; // for assistive technology, where the title alone is not unique
    };

    explicit RowButton(const Content& content, QWidget* parent = nullptr);

    const Content& content() const { return m_content; }

    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRect textRect(int width) const;
    int endWidth() const;
    void paintEnd(QPainter& painter) const;

    const Content m_content;
};
