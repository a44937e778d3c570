#include "widgets/ButtonRole.h"

#include "widgets/StyleProperty.h"

#include <QPushButton>

#include <array>

namespace {

constexpr auto names = std::to_array<QStringView>({ u"default", u"primary", u"danger", u"link" });
static_assert(names.size() == static_cast<std::size_t>(ButtonRole::Link) + 1);

} // namespace

void setButtonRole(QPushButton* button, ButtonRole role)
{
    setStyleProperty(button, "buttonRole", names[static_cast<std::size_t>(role)]);
    // Qt does so in dialogs only; the pages are to answer the same keys.
    button->setAutoDefault(true);
}

QPushButton* makeButton(const QString& text, ButtonRole role, QWidget* parent)
{
    auto* button = new QPushButton(text, parent);
    setButtonRole(button, role);
    if (role == ButtonRole::Link)
        button->setCursor(Qt::PointingHandCursor);
    return button;
}
