#include "widgets/TextRole.h"

#include "widgets/StyleProperty.h"

#include <QLabel>

#include <array>

namespace {

constexpr auto names = std::to_array<QStringView>({ u"pageTitle", u"cardTitle", u"sectionTitle",
    u"value", u"hint", u"meta", u"danger", u"warning", u"success" });
static_assert(names.size() == static_cast<std::size_t>(TextRole::Success) + 1);

} // namespace

void setTextRole(QLabel* label, TextRole role)
{
    setStyleProperty(label, "textRole", names[static_cast<std::size_t>(role)]);
}
