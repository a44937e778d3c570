#include "pages/ledger/FilterChips.h"

#include "widgets/FilterChip.h"
#include "widgets/TextRole.h"

#include <QHBoxLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

FilterChips::FilterChips(QWidget* parent)
    : QWidget(parent)
    , m_line(new QHBoxLayout(this))
{
    setObjectName(u"filterChips"_s);
    m_line->setContentsMargins(0, 0, 0, 0);
    m_line->setSpacing(8);
    auto* caption = new QLabel(u"仅显示"_s, this);
    setTextRole(caption, TextRole::Hint);
    m_line->addWidget(caption);
    m_line->addStretch();
    hide();
}

void FilterChips::setChips(const QList<Chip>& chips)
{
    setVisible(!chips.isEmpty());
    if (chips == m_chips)
        return;
    m_chips = chips;
    // The chip that was just pressed may be among them.
    for (FilterChip* old : findChildren<FilterChip*>(QString(), Qt::FindDirectChildrenOnly)) {
        m_line->removeWidget(old);
        old->hide();
        old->setParent(nullptr);
        old->deleteLater();
    }
    for (const Chip& chip : chips) {
        auto* widget = new FilterChip(chip.text, this);
        m_line->insertWidget(m_line->count() - 1, widget);
        connect(widget, &FilterChip::clicked, this, [this, key = chip.key] { emit removed(key); });
    }
}
