#include "pages/projects/ProjectListModel.h"

#include <algorithm>

using namespace Qt::StringLiterals;

void ProjectListModel::setProjects(const QList<Project>& projects)
{
    beginResetModel();
    m_projects = projects;
    endResetModel();
}

qint64 ProjectListModel::idAt(int row) const
{
    return row >= 0 && row < m_projects.size() ? m_projects.at(row).id : 0;
}

int ProjectListModel::rowOf(qint64 projectId) const
{
    const auto found = std::find_if(m_projects.cbegin(), m_projects.cend(),
        [projectId](const Project& project) { return project.id == projectId; });
    return found != m_projects.cend() ? static_cast<int>(found - m_projects.cbegin()) : -1;
}

int ProjectListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_projects.size());
}

QVariant ProjectListModel::data(const QModelIndex& index, int role) const
{
    const Project& project = m_projects.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return project.name;
    case Qt::AccessibleTextRole:
        return u"%1 %2"_s.arg(project.name, labelOf(project.status));
    case StatusRole:
        return static_cast<int>(project.status);
    default:
        return {};
    }
}
