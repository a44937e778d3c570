#pragma once

#include "db/BaseDao.h"
#include "db/Project.h"

/// Table `projects`.
class ProjectDao final : public BaseDao {
public:
    /// Ongoing, planned, completed, archived; within a status the one changed last first. The
    /// keyword is looked for in name and client; an empty one asks for all.
    QList<Project> list(const QString& keyword = {});
    std::optional<Project> findById(qint64 id);

    /// Stores a new project and sets its id, and its code where that is blank.
    [[nodiscard]] bool insert(Project& project);
    [[nodiscard]] bool update(const Project& project);
    /// Removes a project without ledger entries, with its contracts and all links to them. Refuses
    /// one that has entries, or whose entries cannot be counted.
    [[nodiscard]] bool remove(qint64 projectId);

    /// The number of ledger entries; nothing when it cannot be read.
    std::optional<qint64> countTransactions(qint64 projectId);
    /// The next free code of this year, "P-2026-0001".
    QString nextCode();

private:
    static Bindings bindingsOf(const Project& project);
};
