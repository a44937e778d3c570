#pragma once

#include "db/Project.h"

#include <QAbstractListModel>
#include <QList>

/// The projects of a search, in its order.
class ProjectListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    static constexpr int StatusRole = Qt::UserRole; // ProjectStatus as an integer

    void setProjects(const QList<Project>& projects);
    /// 0 for a row that does not exist.
    qint64 idAt(int row) const;
    /// -1 for a project that is not in the list.
    int rowOf(qint64 projectId) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

private:
    QList<Project> m_projects;
};
