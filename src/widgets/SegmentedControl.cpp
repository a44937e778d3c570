#include "widgets/SegmentedControl.h"

#include "widgets/ButtonRole.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

SegmentedControl::SegmentedControl(const QString& accessibleName, QWidget* parent)
    : QFrame(parent)
    , m_group(new QButtonGroup(this))
    , m_row(new QHBoxLayout(this))
{
    setObjectName(u"SegmentedControl"_s);
    setAccessibleName(accessibleName);
    setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    m_row->setContentsMargins(3, 3, 3, 3);
    m_row->setSpacing(2);
    m_group->setExclusive(true);
    // Toggled, not clicked: assistive technology and the arrow keys do not click.
    connect(m_group, &QButtonGroup::idToggled, this, [this](int index, bool chosen) {
        if (chosen)
            emit currentChanged(index);
    });
}

int SegmentedControl::addSegment(const QString& text)
{
    const auto index = static_cast<int>(m_group->buttons().size());
    QPushButton* segment = makeButton(text, ButtonRole::Default, this);
    segment->setCheckable(true);
    segment->setChecked(index == 0);
    m_row->addWidget(segment);
    m_group->addButton(segment, index);
    return index;
}

int SegmentedControl::currentIndex() const
{
    return m_group->checkedId();
}

void SegmentedControl::setCurrentIndex(int index)
{
    if (QAbstractButton* segment = m_group->button(index))
        segment->setChecked(true);
}
