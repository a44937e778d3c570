#include "theme/Theme.h"

#include "theme/StyleSheet.h"

#include <QApplication>
#include <QLabel>
#include <QPalette>
#include <QStyle>
#include <QToolTip>
#include <QWidget>

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct RoleToken {
    QPalette::ColorRole role;
    Token token;
};

constexpr auto activeRoles = std::to_array<RoleToken>({
    { QPalette::Window, Token::BgPage },
    { QPalette::WindowText, Token::TextPrimary },
    { QPalette::Base, Token::BgInput },
    { QPalette::AlternateBase, Token::BgTableAlt },
    { QPalette::Text, Token::TextPrimary },
    { QPalette::PlaceholderText, Token::TextTertiary },
    { QPalette::Button, Token::BgCard },
    { QPalette::ButtonText, Token::TextPrimary },
    { QPalette::BrightText, Token::DangerText },
    { QPalette::Highlight, Token::BgSelected },
    { QPalette::HighlightedText, Token::TextPrimary },
    { QPalette::Link, Token::Link },
    { QPalette::LinkVisited, Token::Link },
    { QPalette::ToolTipBase, Token::BgTooltip },
    { QPalette::ToolTipText, Token::TextTooltip },
    { QPalette::Light, Token::BgCard },
    { QPalette::Midlight, Token::BgHover },
    { QPalette::Mid, Token::Border },
    { QPalette::Dark, Token::BorderStrong },
    { QPalette::Shadow, Token::BorderStrong },
});

constexpr auto disabledRoles = std::to_array<RoleToken>({
    { QPalette::WindowText, Token::TextDisabled },
    { QPalette::Text, Token::TextDisabled },
    { QPalette::ButtonText, Token::TextDisabled },
    { QPalette::PlaceholderText, Token::TextDisabled },
    { QPalette::HighlightedText, Token::TextDisabled },
    { QPalette::Base, Token::BgInputDisabled },
    { QPalette::Highlight, Token::BgInputDisabled },
});

QPalette paletteFor(ThemeMode mode)
{
    QPalette palette;
    for (const auto& [role, token] : activeRoles)
        palette.setColor(role, tokenColor(token, mode));
    for (const auto& [role, token] : disabledRoles)
        palette.setColor(QPalette::Disabled, role, tokenColor(token, mode));
    return palette;
}

// A label lays its text out once, in the link colour of that moment.
void recolourLinks(QLabel* label)
{
    const QString text = label->text();
    const bool rich = label->textFormat() == Qt::RichText
        || (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(text));
    if (!rich || !text.contains(u"<a "_s))
        return;
    label->clear();
    label->setText(text);
}

void repaintEverything()
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget* widget : widgets) {
        if (auto* label = qobject_cast<QLabel*>(widget))
            recolourLinks(label);
        widget->update();
    }
}

} // namespace

Theme& Theme::instance()
{
    static Theme theme;
    return theme;
}

void Theme::apply(ThemeMode mode)
{
    // A style sheet makes every widget take on its style anew: not for nothing at every start.
    if (mode == m_mode && !qApp->styleSheet().isEmpty())
        return;
    m_mode = mode;
    // The same base style on every platform: the style sheet is drawn and checked on this one.
    if (qApp->styleSheet().isEmpty())
        QApplication::setStyle(u"Fusion"_s);
    const QPalette palette = paletteFor(mode);
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
    qApp->setStyleSheet(styleSheetFor(mode));
    emit changed();
    repaintEverything();
}

QColor Theme::color(Token token) const
{
    return tokenColor(token, m_mode);
}

QString Theme::hex(Token token) const
{
    return color(token).name();
}
