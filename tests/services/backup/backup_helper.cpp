// Runs backups and restores in child processes of its own that are killed, or whose disk fails,
// at each of their system calls in turn, and tells what is found afterwards.
//
//   backup_helper kill|fail backup|restore     every step, one line each
//   backup_helper break restore                from every step on, nothing works any more
//   backup_helper chance restore               killed at random times
//   backup_helper repair restore               both the restore and its repair killed
//   backup_helper order backup|restore|repair|start
//                                              nothing disturbed: what moves, and what is made
//                                              durable, in its order
//
// A line: step, what the disturbed process told (empty when it was killed), what the next start
// finds; separated by tabs. The last line of a run belongs to an undisturbed process.

#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "db/ProfileDao.h"
#include "services/backup/BackupSample.h"
#include "services/backup/BackupService.h"
#include "services/backup/FileFaults.h"
#include "services/backup/RestoreRepair.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTextStream>

#include <array>
#include <csignal>
#include <filesystem>
#include <functional>

#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using FileFaults::Effect;

namespace {

namespace fs = std::filesystem;

// Where the copies of the data lie that every run starts from.
struct Stage {
    QTemporaryDir root;
    QString target = root.filePath(u"target"_s); // of backups
    QString pristine = root.filePath(u"pristine"_s); // the old data directory
    QString backup; // of the new data
};

void quiet(QtMsgType, const QMessageLogContext&, const QString&) { }

void replaceFolder(const QString& source, const QString& target)
{
    fs::remove_all(target.toStdString());
    fs::copy(source.toStdString(), target.toStdString(), fs::copy_options::recursive);
}

bool fillFresh(const QString& side)
{
    fs::remove_all(AppPaths::dataDir().toStdString());
    return AppPaths::ensureDirs() && DatabaseManager::instance().open() && BackupSample::fill(side);
}

bool prepare(Stage& stage, int moreFiles)
{
    bool made = QDir().mkpath(stage.target) && fillFresh(u"新"_s);
    const BackupResult backup = BackupService().backupTo(stage.root.path());
    DatabaseManager::instance().close();
    stage.backup = backup.folder;
    made = made && backup.ok && fillFresh(u"旧"_s);
    for (int i = 0; i < moreFiles; ++i)
        made = made
            && BackupSample::put(AppPaths::voucherAssetsDir() + u"/more/"_s + QString::number(i),
                QByteArray(5000, 'x'));
    DatabaseManager::instance().close();
    replaceFolder(AppPaths::dataDir(), stage.pristine);
    return made;
}

// What the work writes into its pipe; empty when its process was killed. `patience` in
// microseconds ends it from outside.
QByteArray inChild(const std::function<QString()>& work, useconds_t patience = 0)
{
    std::array<int, 2> pipe {};
    if (::pipe(pipe.data()) != 0)
        return "no pipe";
    const pid_t child = ::fork();
    if (child == 0) {
        const QByteArray told = work().toUtf8();
        ::_exit(::write(pipe[1], told.constData(), static_cast<size_t>(told.size())) < 0 ? 1 : 0);
    }
    ::close(pipe[1]);
    if (patience > 0) {
        ::usleep(patience);
        ::kill(child, SIGKILL);
    }
    QByteArray told;
    std::array<char, 4096> buffer {};
    for (ssize_t size = 0; (size = ::read(pipe[0], buffer.data(), buffer.size())) > 0;)
        told.append(buffer.data(), size);
    ::close(pipe[0]);
    ::waitpid(child, nullptr, 0);
    return told;
}

// The work on the open database with a fault at a step: how it ended, what the user is told, what
// the database holds then and whether the work was over before that step.
template <typename Work> QString disturbed(const Work& work, Effect effect, int step)
{
    if (!DatabaseManager::instance().open())
        return u"not opened"_s;
    FileFaults::arm(effect, step);
    const auto result = work();
    const int steps = FileFaults::disarm();
    bool open = true;
    if constexpr (requires { result.databaseOpen; })
        open = result.databaseOpen;
    return u"%1|%2|%3|%4"_s.arg(result.ok ? u"ok"_s : u"failed"_s, result.message,
        open ? BackupSample::signature() : u"closed"_s,
        steps < step || step == 0 ? u"undisturbed"_s : QString());
}

QString disturbedRestore(const Stage& stage, Effect effect, int step)
{
    return disturbed([&] { return BackupService().restoreFrom(stage.backup); }, effect, step);
}

QString disturbedBackup(const Stage& stage, Effect effect, int step)
{
    return disturbed([&] { return BackupService().backupTo(stage.target); }, effect, step);
}

QString disturbedRepair(Effect effect, int step)
{
    FileFaults::arm(effect, step);
    const auto problem = RestoreRepair::run();
    FileFaults::disarm();
    return problem.value_or(u"repaired"_s);
}

// What a manual backup in the target folder is worth.
QString backupsIn(const QString& target)
{
    QStringList found;
    for (const QString& name : QDir(target).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString folder = target + u'/' + name;
        const BackupPreview preview = BackupService::inspect(folder);
        const bool same = BackupSample::tree(folder + u"/voucher_assets"_s)
            == BackupSample::tree(AppPaths::voucherAssetsDir());
        found += !preview.ok                                             ? u"invalid"_s
            : preview.warnings.isEmpty() && same && preview.entries == 2 ? u"whole"_s
                                                                         : u"BROKEN"_s;
    }
    return found.isEmpty() ? u"none"_s : found.join(u',');
}

// The next start of the program.
QString nextStart(const Stage& stage)
{
    if (!AppPaths::ensureDirs())
        return u"no folders"_s;
    if (const auto problem = RestoreRepair::run())
        return u"not repaired: "_s + *problem;
    if (!DatabaseManager::instance().open())
        return u"not opened: "_s + DatabaseManager::instance().lastError();
    QString found = BackupSample::signature();
    if (!ProfileDao().setThemeMode(u"dark"_s))
        found += u" not writable"_s;
    const QStringList strangers = BackupSample::strangersInDataDir();
    if (!strangers.isEmpty())
        found += u" left behind: "_s + strangers.join(u',');
    found += u'|' + backupsIn(stage.target);
    DatabaseManager::instance().close();
    return found;
}

void reset(const Stage& stage)
{
    replaceFolder(stage.pristine, AppPaths::dataDir());
    fs::remove_all(stage.target.toStdString());
    fs::create_directory(stage.target.toStdString());
}

void print(int step, const QByteArray& told, const QByteArray& found)
{
    static QTextStream out(stdout);
    const auto oneLine
        = [](const QByteArray& text) { return QString::fromUtf8(text).replace(u'\n', u' '); };
    out << step << '\t' << oneLine(told) << '\t' << oneLine(found) << Qt::endl;
}

using Disturbed = QString (*)(const Stage&, Effect, int);

void everyStep(const Stage& stage, Disturbed work, Effect effect)
{
    for (int step = 1;; ++step) {
        reset(stage);
        const QByteArray told = inChild([&] { return work(stage, effect, step); });
        print(step, told, inChild([&] { return nextStart(stage); }));
        if (told.endsWith("undisturbed"))
            return;
    }
}

void byChance(const Stage& stage)
{
    constexpr int rounds = 30;
    const auto work = [&] { return disturbedRestore(stage, Effect::CountOnly, 0); };
    int microseconds = 0;
    // The times within which it is killed follow how fast the machine is just now.
    const auto timed = [&](useconds_t patience) {
        reset(stage);
        QElapsedTimer timer;
        timer.start();
        const QByteArray told = inChild(work, patience);
        if (!told.isEmpty())
            microseconds = static_cast<int>(timer.nsecsElapsed() / 1000);
        return told;
    };
    timed(0);
    std::srand(1);
    for (int round = 1; round <= rounds; ++round) {
        const QByteArray told = timed(static_cast<useconds_t>(1 + std::rand() % microseconds));
        print(round, told, inChild([&] { return nextStart(stage); }));
    }
}

// A restore killed at every few steps, and its repair at every step.
void repairToo(const Stage& stage)
{
    constexpr int stride = 7;
    for (int step = 1;; step += stride) {
        for (int repairStep = 1;; ++repairStep) {
            reset(stage);
            const QByteArray told
                = inChild([&] { return disturbedRestore(stage, Effect::Kill, step); });
            if (told.endsWith("undisturbed"))
                return;
            const QByteArray repaired
                = inChild([&] { return disturbedRepair(Effect::Kill, repairStep); });
            print(step, repaired, inChild([&] { return nextStart(stage); }));
            if (!repaired.isEmpty())
                break;
        }
    }
}

// A path below the data directory or the folder of backups, without the time in its name.
QString shortName(const Stage& stage, const std::string& path)
{
    static const QRegularExpression time(u"brixa_backup_\\d+_\\d+"_s);
    QString name = QString::fromStdString(path);
    name.replace(stage.target, u"target"_s).replace(AppPaths::dataDir(), u"data"_s);
    return name.remove(u"data/"_s).replace(time, u"backup"_s);
}

bool isRemoval(const FileFaults::Call& call)
{
    return QStringList({ u"unlink"_s, u"unlinkat"_s, u"rmdir"_s, u"remove"_s })
        .contains(QString::fromStdString(call.name));
}

// Nothing for a call that has no place in the order: what files hold, what SQLite flushes for
// itself, what is created or removed outside of an exchange.
QString stepText(const Stage& stage, const FileFaults::Call& call)
{
    const QString name = shortName(stage, call.path);
    if (call.name == "fsync")
        return u"sync "_s + name;
    if (call.name == "syncfs")
        return u"sync all of "_s + name;
    if (call.name == "linkat")
        return u"write "_s + shortName(stage, call.target);
    if (call.name == "rename")
        return u"move %1 to %2"_s.arg(name, shortName(stage, call.target));
    if (isRemoval(call) && name.startsWith(u"restore_"_s))
        return u"remove "_s + name.section(u'/', 0, 0);
    return {};
}

QString orderOf(const Stage& stage)
{
    QStringList order;
    for (const FileFaults::Call& call : FileFaults::calls()) {
        const QString text = stepText(stage, call);
        if (!text.isEmpty() && text != order.value(order.size() - 1))
            order += text;
    }
    return order.join(u"; "_s);
}

// Another program that reads the database keeps its log files in place.
bool openBesideReader()
{
    QSqlDatabase reader = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"reader"_s);
    reader.setDatabaseName(AppPaths::databasePath());
    return DatabaseManager::instance().open() && reader.open()
        && QSqlQuery(reader).exec(u"SELECT 1 FROM transactions"_s);
}

QString restoreBesideReader(const Stage& stage, Effect effect, int step)
{
    if (!openBesideReader())
        return u"not opened"_s;
    FileFaults::arm(effect, step);
    const RestoreResult result = BackupService().restoreFrom(stage.backup);
    FileFaults::disarm();
    return result.ok ? orderOf(stage) : result.message;
}

using IsCall = bool (*)(const FileFaults::Call&);

bool endsExchange(const FileFaults::Call& call)
{
    return call.name == "rename" && call.target.ends_with("/restore_leftovers");
}

bool removesLeftovers(const FileFaults::Call& call)
{
    return isRemoval(call) && call.path.find("/restore_leftovers") != std::string::npos;
}

// Leaves the data directory as a restore does that is killed before this call.
void killRestoreBefore(const Stage& stage, IsCall isCall)
{
    reset(stage);
    const QByteArray step = inChild([&] {
        restoreBesideReader(stage, Effect::CountOnly, 0);
        const auto& calls = FileFaults::calls();
        const auto found = std::find_if(calls.begin(), calls.end(), isCall);
        return QString::number(found - calls.begin() + 1);
    });
    reset(stage);
    inChild([&] { return restoreBesideReader(stage, Effect::Kill, step.toInt()); });
}

QString orderOfRepair(const Stage& stage)
{
    return disturbedRepair(Effect::CountOnly, 0) == u"repaired"_s ? orderOf(stage) : QString();
}

void order(const Stage& stage, const QString& work)
{
    QByteArray told;
    reset(stage);
    const std::string data = AppPaths::dataDir().toStdString();
    if (work == u"backup"_s) {
        told = inChild([&] {
            disturbedBackup(stage, Effect::CountOnly, 0);
            return orderOf(stage);
        });
    } else if (work == u"restore"_s) {
        fs::create_directory(data + "/restore_leftovers");
        told = inChild([&] { return restoreBesideReader(stage, Effect::CountOnly, 0); });
    } else if (work == u"repair"_s) {
        killRestoreBefore(stage, endsExchange);
        // The folder's latest name did not reach the disk.
        fs::rename(data + "/restore_swap", data + "/restore_staging");
        told = inChild([&] { return orderOfRepair(stage); });
    } else {
        killRestoreBefore(stage, removesLeftovers);
        told = inChild([&] { return orderOfRepair(stage); });
    }
    print(1, told, inChild([&] { return nextStart(stage); }));
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationVersion(u"1.0.0"_s);
    qInstallMessageHandler(quiet);
    const QString mode = QCoreApplication::arguments().value(1);
    const QString work = QCoreApplication::arguments().value(2);
    const bool restore = work == u"restore"_s;
    Stage stage;
    if (!prepare(stage, mode == u"chance"_s ? 60 : 0))
        return 1;
    if (mode == u"order"_s)
        order(stage, work);
    else if (mode == u"chance"_s)
        byChance(stage);
    else if (mode == u"repair"_s)
        repairToo(stage);
    else
        everyStep(stage, restore ? disturbedRestore : disturbedBackup,
            mode == u"kill"_s        ? Effect::Kill
                : mode == u"break"_s ? Effect::FailFromThere
                                     : Effect::Fail);
    return 0;
}
