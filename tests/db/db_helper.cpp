#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "db/ProjectDao.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTextStream>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace {

QTextStream& out()
{
    static QTextStream stream(stdout);
    return stream;
}

void printWarnings(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type == QtWarningMsg || type == QtCriticalMsg)
        out() << "log: " << text << Qt::endl;
}

// Holds the file of the path until the input closes: for itself, or for writing alone, so that
// others can still read it.
int lock(const QString& path, bool forItself)
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"holder"_s);
        database.setDatabaseName(path);
        const bool opened = database.open();
        QSqlQuery query(database);
        const bool locked = opened
            && (forItself ? query.exec(u"PRAGMA locking_mode = EXCLUSIVE"_s)
                        && query.exec(u"BEGIN EXCLUSIVE"_s)
                          : query.exec(u"BEGIN IMMEDIATE"_s));
        out() << (locked ? "locked" : "failed") << Qt::endl;
        QTextStream(stdin).readLine();
    }
    QSqlDatabase::removeDatabase(u"holder"_s);
    return 0;
}

// Permissions mean nothing to root: gives them up for good, taking the data directory along or
// leaving it behind.
bool becomeGuest(bool keepData)
{
#ifdef Q_OS_UNIX
    constexpr uid_t nobody = 65534;
    if (::geteuid() != 0)
        return true;
    const QByteArray data = AppPaths::dataDir().toLocal8Bit();
    const QByteArray backups = AppPaths::backupsDir().toLocal8Bit();
    const bool kept = !keepData
        || (::chown(data.constData(), nobody, nobody) == 0
            && ::chown(backups.constData(), nobody, nobody) == 0);
    return kept && ::setgid(nobody) == 0 && ::setuid(nobody) == 0;
#else
    Q_UNUSED(keepData)
    return true;
#endif
}

// Opens the database beside the helper and tells what can be done with it.
int tryOut()
{
    qInstallMessageHandler(printWarnings);
    DatabaseManager& manager = DatabaseManager::instance();
    const bool opened = manager.open();
    out() << "opened: " << opened << " " << manager.lastError() << Qt::endl;
    if (opened) {
        ProjectDao projects;
        out() << "version: " << manager.userVersion() << Qt::endl;
        out() << "projects: " << projects.list().size() << Qt::endl;
        Project project;
        const bool written = projects.insert(project);
        out() << "written: " << written << Qt::endl;
    }
    manager.close();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == u"lock"_s || arguments.value(1) == u"write"_s)
        return lock(arguments.value(2), arguments.value(1) == u"lock"_s);
    if (arguments.value(1) == u"guest"_s && !becomeGuest(true))
        return 1;
    if (arguments.value(1) == u"stranger"_s && !becomeGuest(false))
        return 1;
    return tryOut();
}
