#include "DemoCompany.h"

#include "core/TextRules.h"
#include "db/ContractDao.h"
#include "db/ProjectDao.h"
#include "DemoClock.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 yuan = 100;

struct ContractRow {
    QStringView name;
    QStringView signDate;
    qint64 fen;
    ContractStatus status;
};

struct ProjectRow {
    QStringView name;
    QStringView client;
    ProjectStatus status;
    QStringView start;
    QStringView end; // empty: not set
    qint64 budgetFen;
    QStringView note;
    std::array<ContractRow, 2> contracts; // those with a name
};

using enum ProjectStatus;

constexpr auto projectRows = std::to_array<ProjectRow>({
    { u"山岚作品集网站", u"本公司内部项目", Archived, u"2024-06-03", u"2024-11-29", 18'000 * yuan,
        u"对外展示的作品集，已上线。", {} },
    { u"云栖谷民宿品牌与导视系统", u"云栖谷民宿（杭州）有限公司", Completed, u"2024-11-04",
        u"2025-03-28", 168'000 * yuan, u"含品牌手册、导视深化与现场巡检两次。",
        { { { u"品牌与导视设计合同", u"2024-11-04", 168'000 * yuan,
            ContractStatus::Completed } } } },
    { u"青川茶业年度视觉服务", u"青川茶业有限公司", Ongoing, u"2025-01-02", u"2025-12-31",
        240'000 * yuan, u"按月服务，每月 25 日前结算。",
        { { { u"年度视觉服务框架合同", u"2025-01-02", 240'000 * yuan, ContractStatus::Active },
            { u"中秋礼盒包装补充协议", u"2025-06-16", 36'000 * yuan,
                ContractStatus::Completed } } } },
    { u"南屿咖啡包装与门店物料", u"宁波南屿咖啡有限公司", Completed, u"2025-01-13", u"2025-05-30",
        96'000 * yuan, u"首批十二款包装，门店物料八类。",
        { { { u"包装设计服务合同", u"2025-01-13", 96'000 * yuan, ContractStatus::Completed } } } },
    { u"白鹭文旅节主视觉", u"湖州白鹭文旅发展有限公司", Completed, u"2025-03-03", u"2025-06-20",
        128'000 * yuan, u"主视觉、海报系列与开幕式舞台画面。",
        { { { u"文旅节主视觉设计合同", u"2025-03-03", 128'000 * yuan,
            ContractStatus::Completed } } } },
    { u"木芽母婴官网与插画", u"上海木芽母婴用品有限公司", Ongoing, u"2025-07-07", u"2026-01-30",
        156'000 * yuan, u"插画三十六幅，分三批交付。",
        { { { u"官网视觉与插画委托合同", u"2025-07-07", 156'000 * yuan,
            ContractStatus::Active } } } },
    { u"海潮书店空间图形", u"舟山海潮书店有限公司", Ongoing, u"2025-09-01", u"2026-02-28",
        88'000 * yuan, u"墙面图形与阅读角标识。",
        { { { u"空间图形设计合同", u"2025-09-01", 88'000 * yuan, ContractStatus::Active } } } },
    { u"星野露营品牌升级", u"安吉星野露营有限公司", Ongoing, u"2025-10-13", u"2026-03-31",
        132'000 * yuan, u"标志、应用系统与营地导视。",
        { { { u"品牌升级设计合同", u"2025-10-13", 132'000 * yuan, ContractStatus::Active },
            { u"营地导视打样协议", u"2025-11-03", 24'000 * yuan, ContractStatus::Terminated } } } },
    { u"溪山博物馆文创提案", u"溪山县博物馆", Planning, u"2026-01-05", u"", 60'000 * yuan,
        u"等待对方立项批复。", {} },
});

Project projectOf(const ProjectRow& row)
{
    return { .name = row.name.toString(),
        .clientName = row.client.toString(),
        .status = row.status,
        .startDate = TextRules::dateFromText(row.start),
        .endDate = TextRules::dateFromText(row.end),
        .budgetFen = row.budgetFen,
        .manager = u"林岚"_s,
        .note = row.note.toString() };
}

Contract contractOf(const ContractRow& row, const Project& project)
{
    return { .projectId = project.id,
        .name = row.name.toString(),
        .partyB = project.clientName,
        .amountFen = row.fen,
        .signDate = TextRules::dateFromText(row.signDate),
        .status = row.status };
}

} // namespace

CompanyProfile DemoCompany::profile()
{
    return { .companyName = u"杭州山岚设计有限公司"_s,
        .creditCode = u"91330106MA2DEM025N"_s,
        .shareholderName = u"林岚"_s,
        .bankName = u"示范商业银行杭州文三支行"_s,
        .bankAccount = u"3300 1888 0000 2025 666"_s,
        .address = u"浙江省杭州市西湖区文三路 000 号 3 幢 502 室"_s,
        .phone = u"0571-00000000"_s };
}

Problem DemoCompany::store()
{
    for (const ProjectRow& row : projectRows) {
        Project project = projectOf(row);
        DemoClock::set(std::min(project.startDate, DemoClock::today().addDays(-3)), 10);
        ProjectDao projects;
        if (!projects.insert(project))
            return u"project %1: %2"_s.arg(project.name, projects.lastError());
        m_projects += project;
        for (const ContractRow& contractRow : row.contracts) {
            if (contractRow.name.isEmpty())
                continue;
            Contract contract = contractOf(contractRow, project);
            DemoClock::set(contract.signDate, 15);
            ContractDao contracts;
            if (!contracts.insert(contract))
                return u"contract %1: %2"_s.arg(contract.name, contracts.lastError());
            m_contracts += contract;
        }
    }
    return {};
}

const Project& DemoCompany::project(QStringView beginning) const
{
    const auto found = std::find_if(m_projects.begin(), m_projects.end(),
        [beginning](const Project& project) { return project.name.startsWith(beginning); });
    Q_ASSERT(found != m_projects.end());
    return *found;
}
