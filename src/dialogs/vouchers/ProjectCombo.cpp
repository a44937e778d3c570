#include "dialogs/vouchers/ProjectCombo.h"

#include "db/ProjectDao.h"

using namespace Qt::StringLiterals;

namespace {

QString textOf(const Project& project)
{
    return u"%1（%2）"_s.arg(project.name, project.code);
}

} // namespace

ProjectCombo::ProjectCombo(QWidget* parent)
    : QComboBox(parent)
{
    // Long names must not widen the dialog.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(12);
    addItem(u"不关联"_s, QVariant::fromValue<qint64>(0));
    for (const Project& project : ProjectDao().list())
        addItem(textOf(project), project.id);
}

qint64 ProjectCombo::projectId() const
{
    return currentData().toLongLong();
}

void ProjectCombo::setProjectId(qint64 id)
{
    if (findData(id) < 0) {
        const std::optional<Project> project = ProjectDao().findById(id);
        const QString name = project ? textOf(*project) : u"项目 #%1"_s.arg(id);
        addItem(name + u"（历史项目）"_s, id);
    }
    setCurrentIndex(findData(id));
}
