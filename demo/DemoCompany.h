#pragma once

#include "db/CompanyProfile.h"
#include "db/Contract.h"
#include "db/Project.h"
#include "Problem.h"

#include <QList>

/// The company of the demo, a small design studio: its profile, and its projects with their
/// contracts.
class DemoCompany final {
public:
    /// What the owner types into the first-run wizard.
    static CompanyProfile profile();

    /// Stores projects and contracts, each on the day on which it began.
    [[nodiscard]] Problem store();

    /// As stored, in the order in which they began.
    const QList<Project>& projects() const { return m_projects; }
    const QList<Contract>& contracts() const { return m_contracts; }

    /// The project whose name begins so.
    const Project& project(QStringView beginning) const;

private:
    QList<Project> m_projects;
    QList<Contract> m_contracts;
};
