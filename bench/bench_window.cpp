// What the owner waits for: the start, the pages, a search, a saved entry; and the memory taken.
// Times run until the window is painted, on a screen without a display.

#include "app/ApplicationSetup.h"
#include "app/MainWindow.h"
#include "app/PageFactory.h"
#include "app/Startup.h"
#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "db/ProfileDao.h"
#include "db/TransactionDao.h"
#include "services/entries/EntryRules.h"
#include "services/entries/EntryService.h"
#include "services/figures/Period.h"
#include "support/BenchLedger.h"
#include "support/BenchRun.h"
#include "support/RawDatabase.h"
#include "support/Timing.h"
#include "widgets/SegmentedControl.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int repetitions = 9;

QString childOption()
{
    return u"--start-once"_s;
}

qint64 steadyMicroseconds()
{
    return std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

void require(bool done, const char* what)
{
    if (!done)
        qFatal("Cannot be measured: %s", what);
}

// Resident memory of this process in MiB.
double residentMemory()
{
    QFile status(u"/proc/self/status"_s);
    require(status.open(QIODevice::ReadOnly), "memory");
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).chopped(2).trimmed().toDouble() / 1024;
    }
    return 0;
}

// Everything that was asked for is done and painted.
void settle()
{
    for (int round = 0; round < 3; ++round)
        QCoreApplication::processEvents();
}

template <typename Widget> Widget& part(const QWidget& window, const QString& name)
{
    auto* found = window.findChild<Widget*>(name);
    require(found, qUtf8Printable(name));
    return *found;
}

// Tells when the main window paints itself for the first time, and ends the program.
class FirstPaint final : public QObject {
public:
    explicit FirstPaint(qint64 startedAt)
        : m_startedAt(startedAt)
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (!m_seen && event->type() == QEvent::Paint && qobject_cast<MainWindow*>(watched)) {
            m_seen = true;
            QTimer::singleShot(0, this, &FirstPaint::report);
        }
        return false;
    }

private:
    void report()
    {
        const double milliseconds = double(steadyMicroseconds() - m_startedAt) / 1000;
        printf("%.1f %.1f\n", milliseconds, residentMemory());
        QApplication::quit();
    }

    qint64 m_startedAt;
    bool m_seen = false;
};

int startOnce(qint64 startedAt)
{
    const FirstPaint watcher(startedAt);
    Startup startup;
    return startup.run();
}

struct Start {
    double milliseconds = 0;
    double mebibytes = 0;
};

Start measureStart()
{
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(),
        { childOption(), QString::number(steadyMicroseconds()) });
    require(child.waitForFinished() && child.exitCode() == 0, "start");
    const QList<QByteArray> figures = child.readAllStandardOutput().trimmed().split(' ');
    require(figures.size() == 2, "start's figures");
    return { figures[0].toDouble(), figures[1].toDouble() };
}

// A ledger whose ten years end today, of an owner who has seen the gates.
void makeLedger(int entries)
{
    BenchLedger::use(entries);
    DatabaseManager& database = DatabaseManager::instance();
    database.close();
    const QByteArray days = QByteArray::number(QDate(2025, 12, 30).daysTo(QDate::currentDate()));
    RawDatabase(AppPaths::databasePath())
        .run("UPDATE transactions SET trans_date = date(trans_date, '" + days + " days')");
    require(database.open(), "database");
    ProfileDao profiles;
    CompanyProfile profile = profiles.load();
    profile.companyName = u"杭州山岚设计有限公司"_s;
    profile.shareholderName = u"林岚"_s;
    require(profiles.save(profile) && profiles.confirmDisclaimer(u"DISCLAIMER_V1.0"_s), "profile");
    database.close();
}

void printLine(int entries, const char* job, const Seconds& times)
{
    printf(
        "%7d  %-28s %8.0f ms %8.0f ms\n", entries, job, times.wall * 1000, times.processor * 1000);
    fflush(stdout);
}

// Goes to a page, from one whose own cost is not counted.
Seconds timePage(MainWindow& window, PageId page)
{
    return medianOf(
        repetitions,
        [&] {
            window.onPageNavigateRequested(PageId::Settings, {});
            settle();
        },
        [&] {
            window.onPageNavigateRequested(page, {});
            settle();
        });
}

Seconds timeSearch(MainWindow& window, const QString& keyword)
{
    const auto& card = part<QWidget>(window, u"LedgerFilterCard"_s);
    part<QLineEdit>(card, u"keyword"_s).setText(keyword);
    auto& search = part<QAbstractButton>(card, u"search"_s);
    return medianOf(
        repetitions, [] {},
        [&] {
            search.click();
            settle();
        });
}

Seconds timeSave(MainWindow& window)
{
    const std::optional<Transaction> pattern = TransactionDao().findById(1);
    require(pattern.has_value(), "pattern");
    return medianOf(
        repetitions, [] {},
        [&] {
            const Transaction entry = EntryRules::copyOf(*pattern, QDate::currentDate());
            require(EntryService::save(entry, {}, {}).ok, "save");
            window.refreshCurrent();
            settle();
        });
}

void measureWindow(int entries)
{
    MainWindow window(createPage);
    window.resize(1440, 900);
    window.show();
    settle();
    printLine(entries, "dashboard", timePage(window, PageId::Dashboard));
    printLine(entries, "reports, this year", timePage(window, PageId::Reports));
    part<SegmentedControl>(part<QWidget>(window, u"reportRange"_s), u"SegmentedControl"_s)
        .setCurrentIndex(static_cast<int>(Period::All));
    printLine(entries, "reports, all years", timePage(window, PageId::Reports));
    printLine(entries, "ledger", timePage(window, PageId::Ledger));
    printf("%7d  %-28s %8.0f MiB\n", entries, "memory, all entries listed", residentMemory());
    printLine(entries, "search, all entries", timeSearch(window, {}));
    printLine(entries, "search by a word", timeSearch(window, u"工资"_s));
    part<QLineEdit>(part<QWidget>(window, u"LedgerFilterCard"_s), u"keyword"_s).clear();
    printLine(entries, "save an entry", timeSave(window));
}

void measure(int entries)
{
    makeLedger(entries);
    measureStart(); // fills the caches
    std::vector<Start> starts;
    for (int i = 0; i < repetitions; ++i)
        starts.push_back(measureStart());
    std::ranges::sort(starts, {}, &Start::milliseconds);
    const Start& typical = starts[repetitions / 2];
    printf("%7d  %-28s %8.0f ms %8.0f MiB\n", entries, "start", typical.milliseconds,
        typical.mebibytes);
    require(DatabaseManager::instance().open(), "database");
    measureWindow(entries);
}

} // namespace

int main(int argc, char** argv)
{
    ApplicationSetup::keepHomeClean();
    QApplication app(argc, argv);
    ApplicationSetup::configure(app);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == childOption())
        return startOnce(arguments.value(2).toLongLong());
    BenchRun::keepQuiet();
    printf("entries  what                         by the clock     processor\n");
    QStringList sizes = arguments.mid(1);
    if (sizes.isEmpty())
        sizes = { u"1000"_s, u"10000"_s, u"100000"_s };
    for (const QString& size : std::as_const(sizes))
        measure(size.toInt());
    BenchLedger::close();
    return 0;
}
