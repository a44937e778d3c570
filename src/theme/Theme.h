#pragma once

#include "theme/ThemeTokens.h"

#include <QObject>

/// The look of the whole program: one mode at a time, one source of colours.
class Theme final : public QObject {
    Q_OBJECT

public:
    static Theme& instance();

    ThemeMode mode() const { return m_mode; }

    /// Sets style, palette and style sheet of the application and repaints every widget in the
    /// new colours, links in labels included. The mode in force costs nothing.
    void apply(ThemeMode mode);

    QColor color(Token token) const;

    /// "#rrggbb", for rich text and style sheets.
    QString hex(Token token) const;

signals:
    /// After the application has taken on the new mode; for whatever baked a colour into itself.
    void changed();

private:
    Theme() = default;

    ThemeMode m_mode = ThemeMode::Light;
};
