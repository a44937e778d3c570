#include "core/AppPaths.h"
#include "db/Connection.h"
#include "db/DatabaseManager.h"
#include "db/SqlScript.h"
#include "selfcheck/CheckDao.h"
#include "selfcheck/Findings.h"
#include "selfcheck/Suites.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 knownVersion = 3;

// Reading a larger file whole takes too long here; it is done at every start anyway.
constexpr qint64 largestExaminedFile = qint64(8) * 1024 * 1024;

struct Part {
    QString label; // Chinese
    QString sql; // the names of all parts of the kind
};

const QList<Part>& parts()
{
    static const QList<Part> all {
        { u"数据表"_s,
            u"SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite%'"_s },
        { u"字段"_s,
            u"SELECT m.name || '.' || c.name FROM sqlite_master m JOIN pragma_table_info(m.name) c "
            "WHERE m.type = 'table' AND m.name NOT LIKE 'sqlite%'"_s },
        { u"索引"_s,
            u"SELECT m.name || '（' || (SELECT group_concat(i.name) FROM pragma_index_info(m.name) "
            "i) || '）' FROM sqlite_master m WHERE m.type = 'index' AND m.name NOT LIKE "
            "'sqlite%'"_s },
        { u"触发器"_s,
            u"SELECT name || '（' || tbl_name || '）' FROM sqlite_master WHERE type = 'trigger'"_s },
    };
    return all;
}

// An empty database made by the program's own script, in memory.
class ReferenceDatabase final {
public:
    ReferenceDatabase()
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, m_name);
        database.setDatabaseName(u":memory:"_s);
        QFile script(u":/sql/schema.sql"_s);
        m_usable = database.open() && script.open(QIODevice::ReadOnly);
        if (!m_usable)
            return;
        QSqlQuery query(database);
        for (const QString& statement :
            SqlScript::splitStatements(QString::fromUtf8(script.readAll()))) {
            if (!SqlScript::stripLineComments(statement).trimmed().startsWith(u"PRAGMA"))
                m_usable = m_usable && query.exec(statement);
        }
    }
    ~ReferenceDatabase()
    {
        QSqlDatabase::database(m_name, false).close();
        QSqlDatabase::removeDatabase(m_name);
    }
    ReferenceDatabase(const ReferenceDatabase&) = delete;
    ReferenceDatabase& operator=(const ReferenceDatabase&) = delete;

    bool isUsable() const { return m_usable; }

    QStringList names(const QString& sql) const
    {
        QSqlQuery query(QSqlDatabase::database(m_name, false));
        QStringList found;
        if (query.exec(sql)) {
            while (query.next())
                found += query.value(0).toString();
        }
        return found;
    }

private:
    QString m_name = u"selfcheck_reference"_s;
    bool m_usable = false;
};

void compareParts(Findings& findings, qint64 version)
{
    const ReferenceDatabase reference;
    if (!findings.expect(reference.isUsable(), u"内置的数据库结构脚本无法使用"_s))
        return;
    CheckDao present;
    for (const Part& part : parts()) {
        const std::optional<QStringList> names = present.texts(part.sql);
        if (!findings.expect(
                names.has_value(), u"%1无法读取：%2"_s.arg(part.label, present.lastError())))
            continue;
        const QStringList expected = reference.names(part.sql);
        for (const QString& name : expected)
            findings.expect(names->contains(name), u"缺少%1 %2"_s.arg(part.label, name));
        // A trigger changes what is stored without anybody's doing. A newer program may have
        // brought some of its own.
        if (part.sql.contains(u"'trigger'"_s) && version <= knownVersion) {
            for (const QString& name : *names)
                findings.expect(
                    expected.contains(name), u"多出来历不明的%1 %2"_s.arg(part.label, name));
        }
    }
}

} // namespace

void Suites::schema(Findings& findings)
{
    DatabaseManager& database = DatabaseManager::instance();
    if (!findings.expect(Connection::current().isOpen(), u"数据库未打开"_s))
        return;
    const qint64 version = database.userVersion();
    findings.expect(version >= knownVersion,
        u"数据库版本为 %1，应为 %2"_s.arg(QString::number(version), QString::number(knownVersion)));
    findings.expect(
        CheckDao().number(u"PRAGMA foreign_keys"_s).value_or(0) == 1, u"外键约束没有启用"_s);
    compareParts(findings, version);
    if (QFileInfo(AppPaths::databasePath()).size() > largestExaminedFile)
        return;
    QString detail;
    const bool whole = database.integrityCheck(&detail);
    findings.expect(whole, u"数据库文件损坏：%1"_s.arg(detail));
}
