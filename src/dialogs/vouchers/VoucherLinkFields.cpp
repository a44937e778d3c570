#include "dialogs/vouchers/VoucherLinkFields.h"

#include "dialogs/vouchers/LinkedEntries.h"
#include "dialogs/vouchers/ProjectCombo.h"
#include "widgets/FieldLabel.h"

#include <QHBoxLayout>
#include <QSet>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QSet<qint64> setOf(const QList<qint64>& ids)
{
    return { ids.begin(), ids.end() };
}

} // namespace

VoucherLinkFields::VoucherLinkFields(QWidget* parent)
    : QWidget(parent)
    , m_project(new ProjectCombo(this))
    , m_entries(new LinkedEntries(this))
{
    auto* label = new FieldLabel(u"所属项目："_s, Required::No, this);
    label->setBuddy(m_project);
    label->setAccessibleName(u"所属项目"_s);
    m_project->setAccessibleName(u"所属项目"_s);
    m_project->setObjectName(u"voucherProject"_s);
    auto* line = new QHBoxLayout;
    line->setSpacing(8);
    line->addWidget(label);
    line->addWidget(m_project, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(12);
    column->addLayout(line);
    column->addWidget(m_entries, 1);
}

void VoucherLinkFields::show(qint64 projectId, const QList<qint64>& entryIds)
{
    m_project->setProjectId(projectId);
    m_entries->setEntryIds(entryIds);
    m_shownProjectId = m_project->projectId();
    m_shownEntryIds = m_entries->entryIds();
}

qint64 VoucherLinkFields::projectId() const
{
    return m_project->projectId();
}

QList<qint64> VoucherLinkFields::entryIds() const
{
    return m_entries->entryIds();
}

bool VoucherLinkFields::isChanged() const
{
    return projectId() != m_shownProjectId || setOf(entryIds()) != setOf(m_shownEntryIds);
}
