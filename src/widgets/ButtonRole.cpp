#include "widgets/ButtonRole.h"

#include "widgets/StyleProperty.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QPushButton>

#include <array>

namespace {

constexpr auto names = std::to_array<QStringView>({ u"default", u"primary", u"danger", u"link" });
static_assert(names.size() == static_cast<std::size_t>(ButtonRole::Link) + 1);

// A button that is not auto-default leaves Enter to its dialog, which would press another one.
class EnterPresses final : public QObject {
public:
    using QObject::QObject;

private:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress)
            return false;
        const auto* pressed = static_cast<QKeyEvent*>(event);
        auto* button = qobject_cast<QPushButton*>(watched);
        if (!button || (pressed->key() != Qt::Key_Return && pressed->key() != Qt::Key_Enter)
            || (pressed->modifiers() & ~Qt::KeypadModifier))
            return false;
        if (!pressed->isAutoRepeat())
            button->click();
        return true;
    }
};

EnterPresses* enterPresses()
{
    static QPointer<EnterPresses> filter;
    if (!filter)
        filter = new EnterPresses(qApp);
    return filter;
}

} // namespace

void setButtonRole(QPushButton* button, ButtonRole role)
{
    setStyleProperty(button, "buttonRole", names[static_cast<std::size_t>(role)]);
    // The default button of a dialog is one that was made so, never the first that Qt finds.
    button->setAutoDefault(role == ButtonRole::Primary);
    button->installEventFilter(enterPresses());
}

QPushButton* makeButton(const QString& text, ButtonRole role, QWidget* parent)
{
    auto* button = new QPushButton(text, parent);
    setButtonRole(button, role);
    if (role == ButtonRole::Link)
        button->setCursor(Qt::PointingHandCursor);
    return button;
}
