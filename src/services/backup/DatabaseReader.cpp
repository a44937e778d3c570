#include "services/backup/DatabaseReader.h"

#include "core/TextRules.h"

#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>
#include <QUrl>
#include <QVariant>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// From this version on the schema script has made all of them.
constexpr int versionWithAllTables = 3;

const QStringList& tables()
{
    static const QStringList names { u"company_profile"_s, u"projects"_s, u"contracts"_s,
        u"transactions"_s, u"documents"_s, u"vouchers"_s, u"entity_links"_s };
    return names;
}

const QString& connectionName()
{
    static const QString name = u"backup_reader"_s;
    return name;
}

} // namespace

DatabaseReader::DatabaseReader(const QString& path)
    : m_path(path)
{
    QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, connectionName());
    database.setConnectOptions(u"QSQLITE_OPEN_READONLY;QSQLITE_OPEN_URI"_s);
    // Immutable: SQLite neither locks the file nor looks for, or makes, a log beside it.
    database.setDatabaseName(
        QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded) + u"?immutable=1"_s);
    if (!database.open())
        qWarning("Cannot open %s: %s", qUtf8Printable(path),
            qUtf8Printable(database.lastError().text()));
}

DatabaseReader::~DatabaseReader()
{
    QSqlDatabase::database(connectionName(), false).close();
    QSqlDatabase::removeDatabase(connectionName());
}

std::optional<QString> DatabaseReader::problem() const
{
    QString error;
    const std::optional<QString> version = firstCell(u"PRAGMA user_version"_s, &error);
    if (!version)
        return error;
    // Before any of them is read: a view may compute its rows without end.
    if (version->toLongLong() < 1 || viewsPoseAsTables() || !rowCount(u"company_profile"_s))
        return u"不是本软件的数据库"_s;
    const auto isMissing = [this](const QString& table) { return !rowCount(table); };
    if (version->toLongLong() >= versionWithAllTables
        && std::any_of(tables().begin(), tables().end(), isMissing))
        return u"不是本软件的数据库"_s;
    // SQLite fills a last page that was cut off with zeros and may find nothing wrong with it.
    if (QFileInfo(m_path).size() < size())
        return u"数据库文件不完整"_s;
    const std::optional<QString> finding = firstCell(u"PRAGMA integrity_check"_s, &error);
    if (finding.value_or(error).compare(u"ok"_s, Qt::CaseInsensitive) != 0)
        return u"数据库完整性检查失败：%1"_s.arg(finding.value_or(error));
    return {};
}

bool DatabaseReader::viewsPoseAsTables() const
{
    const QString names = tables().join(u"','"_s);
    return firstCell(u"SELECT COUNT(*) FROM sqlite_master WHERE type = 'view' AND "
                     "lower(name) IN ('%1')"_s.arg(names))
        != u"0"_s;
}

qint64 DatabaseReader::version() const
{
    return firstCell(u"PRAGMA user_version"_s).value_or(QString()).toLongLong();
}

QString DatabaseReader::companyName() const
{
    return firstCell(u"SELECT company_name FROM company_profile WHERE id = 1"_s)
        .value_or(QString());
}

std::optional<QString> DatabaseReader::passwordHash() const
{
    return firstCell(
        u"SELECT password_hash FROM company_profile WHERE id = 1 AND password_enabled = 1"_s);
}

std::optional<int> DatabaseReader::rowCount(const QString& table) const
{
    const std::optional<QString> count = firstCell(u"SELECT COUNT(*) FROM %1"_s.arg(table));
    return count ? std::optional(count->toInt()) : std::nullopt;
}

QDate DatabaseReader::newestEntryDate() const
{
    const QString sql = u"SELECT MAX(trans_date) FROM transactions"_s;
    return TextRules::dateFromText(firstCell(sql).value_or(QString()));
}

std::optional<int> DatabaseReader::vouchersThat(
    const std::function<bool(const QString& path)>& test) const
{
    QSqlQuery query(QSqlDatabase::database(connectionName(), false));
    query.setForwardOnly(true);
    if (!query.exec(u"SELECT stored_path FROM vouchers"_s))
        return {};
    int count = 0;
    while (query.next())
        count += test(query.value(0).toString()) ? 1 : 0;
    return query.lastError().isValid() ? std::nullopt : std::optional(count);
}

qint64 DatabaseReader::size() const
{
    const QString pages = firstCell(u"PRAGMA page_count"_s).value_or(QString());
    const QString pageSize = firstCell(u"PRAGMA page_size"_s).value_or(QString());
    return pages.toLongLong() * pageSize.toLongLong();
}

std::optional<QString> DatabaseReader::firstCell(const QString& sql, QString* error) const
{
    QSqlQuery query(QSqlDatabase::database(connectionName(), false));
    query.setForwardOnly(true);
    if (query.exec(sql) && query.next())
        return query.value(0).toString();
    if (error)
        *error = query.lastError().text();
    return {};
}
