#include "db/ProjectDao.h"

#include "core/TextRules.h"

using namespace Qt::StringLiterals;

namespace {

constexpr auto projectColumns = std::to_array<Column<Project>>({
    column<&Project::id>(u"id"),
    column<&Project::name>(u"name"),
    column<&Project::code>(u"code"),
    column<&Project::clientName>(u"client_name"),
    column<&Project::status>(u"status"),
    column<&Project::startDate>(u"start_date"),
    column<&Project::endDate>(u"end_date"),
    column<&Project::startDateText>(u"start_date"),
    column<&Project::endDateText>(u"end_date"),
    column<&Project::budgetFen>(u"budget_fen"),
    column<&Project::manager>(u"manager"),
    column<&Project::note>(u"note"),
    column<&Project::createdAt>(u"created_at"),
    column<&Project::updatedAt>(u"updated_at"),
});

} // namespace

QList<Project> ProjectDao::list(const QString& keyword)
{
    return readAll<Project>(projectColumns,
        u"SELECT * FROM projects WHERE (:kw = '' OR name LIKE :like OR client_name LIKE :like) "
        "ORDER BY CASE status WHEN 'ongoing' THEN 0 WHEN 'planning' THEN 1 WHEN 'completed' THEN 2 "
        "ELSE 3 END, updated_at DESC"_s,
        { { u":kw"_s, notNull(keyword) }, { u":like"_s, containing(keyword) } });
}

std::optional<Project> ProjectDao::findById(qint64 id)
{
    return readOne<Project>(
        projectColumns, u"SELECT * FROM projects WHERE id = :id"_s, { { u":id"_s, id } });
}

bool ProjectDao::insert(Project& project)
{
    if (TextRules::isBlank(project.code))
        project.code = nextCode();
    return insertRow(
        u"INSERT INTO projects (name, code, client_name, status, start_date, end_date, budget_fen, "
        "manager, note) VALUES (:name, :code, :client_name, :status, :start_date, :end_date, "
        ":budget_fen, :manager, :note)"_s,
        bindingsOf(project), project.id);
}

bool ProjectDao::update(const Project& project)
{
    return write(
        u"UPDATE projects SET name = :name, code = :code, client_name = :client_name, status = "
        ":status, start_date = :start_date, end_date = :end_date, budget_fen = :budget_fen, "
        "manager = :manager, note = :note WHERE id = :id"_s,
        bindingsOf(project) << Binding { u":id"_s, project.id });
}

bool ProjectDao::remove(qint64 projectId)
{
    const std::optional<qint64> entries = countTransactions(projectId);
    if (!entries)
        return false;
    if (*entries > 0)
        return fail(u"该项目下有 %1 笔流水，请先在台账中改派或删除"_s.arg(*entries));
    return write(u"DELETE FROM projects WHERE id = :id"_s, { { u":id"_s, projectId } });
}

std::optional<qint64> ProjectDao::countTransactions(qint64 projectId)
{
    return readNumber(
        u"SELECT COUNT(*) FROM transactions WHERE project_id = :id"_s, { { u":id"_s, projectId } });
}

QString ProjectDao::nextCode()
{
    return nextSerialCode(
        u"SELECT COALESCE(MAX(CAST(substr(code, -4) AS INTEGER)), 0) + 1 AS next_seq FROM projects "
        "WHERE code LIKE :pattern"_s,
        u"P-%1-"_s.arg(QDate::currentDate().year()));
}

BaseDao::Bindings ProjectDao::bindingsOf(const Project& project)
{
    return {
        { u":name"_s, notNull(project.name) },
        { u":code"_s, notNull(project.code) },
        { u":client_name"_s, notNull(project.clientName) },
        { u":status"_s, codeOf(project.status) },
        { u":start_date"_s, dateOrNull(project.startDate) },
        { u":end_date"_s, dateOrNull(project.endDate) },
        { u":budget_fen"_s, orNull(project.budgetFen) },
        { u":manager"_s, nullIfEmpty(project.manager) },
        { u":note"_s, nullIfEmpty(project.note) },
    };
}
