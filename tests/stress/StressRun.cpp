#include "stress/StressRun.h"

#include "core/AppPaths.h"
#include "db/DatabaseManager.h"
#include "services/backup/FileFaults.h"

#include <QDir>
#include <QElapsedTimer>

#include <array>
#include <csignal>
#include <filesystem>

#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using FileFaults::Effect;

namespace {

namespace fs = std::filesystem;

// Evaluations read the whole ledger, so that a long run would become slower and slower.
constexpr int roundsPerLedger = 40;
constexpr int mostJobsInARound = 100;

void copyFolder(const QString& source, const QString& target)
{
    fs::remove_all(target.toStdString());
    fs::copy(source.toStdString(), target.toStdString(), fs::copy_options::recursive);
}

void tellLine(const QString& line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    [[maybe_unused]] const ssize_t written
        = ::write(STDOUT_FILENO, bytes.constData(), static_cast<size_t>(bytes.size()));
}

QString valueOf(const QStringList& lines, const QString& beginning)
{
    for (const QString& line : lines) {
        if (line.startsWith(beginning))
            return line.sliced(beginning.size());
    }
    return {};
}

int numberOf(const QStringList& lines, const QString& name)
{
    return valueOf(lines, name + u'\t').toInt();
}

void tellFindings(const StressFindings& found)
{
    for (const QString& problem : found.problems)
        tellLine(u"problem\t"_s + problem);
    const QList<std::pair<QString, int>> numbers { { u"levels"_s, found.levelsRepaired },
        { u"documents"_s, found.documentsRepaired }, { u"restores"_s, found.restoresRepaired },
        { u"files"_s, found.filesReported }, { u"copies"_s, found.copiesReported },
        { u"backups"_s, found.unfinishedBackups } };
    for (const auto& [name, number] : numbers)
        tellLine(name + u'\t' + QString::number(number));
    tellLine(u"examined\t1"_s);
}

StressFindings findingsIn(const QStringList& lines)
{
    StressFindings found;
    for (const QString& line : lines) {
        if (line.startsWith(u"problem\t"_s))
            found.problems += line.section(u'\t', 1);
    }
    if (numberOf(lines, u"examined"_s) == 0)
        found.problems += u"the examination did not come to its end"_s;
    found.levelsRepaired = numberOf(lines, u"levels"_s);
    found.documentsRepaired = numberOf(lines, u"documents"_s);
    found.restoresRepaired = numberOf(lines, u"restores"_s);
    found.filesReported = numberOf(lines, u"files"_s);
    found.copiesReported = numberOf(lines, u"copies"_s);
    found.unfinishedBackups = numberOf(lines, u"backups"_s);
    return found;
}

QByteArray readLineOf(int handle)
{
    QByteArray line;
    char letter = 0;
    while (::read(handle, &letter, 1) == 1 && letter != '\n')
        line += letter;
    return line;
}

QByteArray readAllOf(int handle)
{
    QByteArray all;
    std::array<char, 4096> buffer {};
    for (ssize_t size = 0; (size = ::read(handle, buffer.data(), buffer.size())) > 0;)
        all.append(buffer.data(), size);
    return all;
}

} // namespace

StressRun::StressRun(const Options& options)
    : m_options(options)
    , m_random(options.seed)
{
}

QString StressRun::prepare()
{
    fs::remove_all(AppPaths::dataDir().toStdString());
    const quint32 seed = m_random.generate();
    const Outcome outcome = inChild([&] {
        StressJobs jobs(m_root.path(), seed);
        const QString problem = StressCheck::start();
        const bool made = problem.isEmpty() && jobs.prepare();
        DatabaseManager::instance().close();
        tellLine(made ? u"made"_s : u"not made "_s + problem);
    });
    m_prepared = valueOf(outcome.lines, u"ack\tprepared\t"_s);
    if (!outcome.lines.contains(u"made"_s) || m_prepared.isEmpty()
        || !QDir().mkpath(StressJobs::backupTarget(m_root.path())))
        return u"the data could not be made: "_s + outcome.lines.join(u' ');
    copyFolder(AppPaths::dataDir(), m_root.filePath(u"pristine"_s));
    for (const auto& row : codeTable<Job>)
        m_extents.insert(row.value, measure(row.value));
    return {};
}

StressRun::Figures StressRun::run()
{
    Figures figures;
    QElapsedTimer timer;
    timer.start();
    int killed = 0;
    for (int number = 1; m_options.kills == 0 || killed < m_options.kills; ++number) {
        if (m_options.seconds > 0 && timer.elapsed() > m_options.seconds * 1000LL)
            break;
        round(number, figures);
        killed = 0;
        for (const int kills : std::as_const(figures.kills))
            killed += kills;
    }
    return figures;
}

StressRun::Figures StressRun::runEveryStep()
{
    Figures figures;
    for (auto job = m_extents.cbegin(); job != m_extents.cend(); ++job) {
        if (m_options.only && job.key() != *m_options.only)
            continue;
        for (int step = 1; step <= job->steps; ++step) {
            reset();
            const QStringList lines = disturb(job.key(), { .step = step }, job->seed, figures);
            examine(lines, u"%1, call %2"_s.arg(codeOf(job.key()), QString::number(step)), figures);
        }
    }
    return figures;
}

// The work writes to the standard output, where the system calls are not counted. With a patience
// in microseconds the process is killed that long after it has said that it is ready.
StressRun::Outcome StressRun::inChild(const Work& work, std::optional<int> patience)
{
    std::array<int, 2> pipe {};
    if (::pipe(pipe.data()) != 0)
        return {};
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(pipe[1], STDOUT_FILENO);
        ::close(pipe[1]);
        ::close(pipe[0]);
        work();
        ::_exit(0);
    }
    ::close(pipe[1]);
    QByteArray told;
    if (patience) {
        while (!told.endsWith("ready\n")) {
            const QByteArray line = readLineOf(pipe[0]);
            if (line.isEmpty())
                break;
            told += line + '\n';
        }
        ::usleep(static_cast<useconds_t>(*patience));
        ::kill(child, SIGKILL);
    }
    told += readAllOf(pipe[0]);
    ::close(pipe[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    return { .lines = QString::fromUtf8(told).split(u'\n', Qt::SkipEmptyParts),
        .killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL };
}

void StressRun::reset()
{
    copyFolder(m_root.filePath(u"pristine"_s), AppPaths::dataDir());
}

Job StressRun::nextJob()
{
    if (m_options.only)
        return *m_options.only;
    return codeTable<Job>.at(m_random.bounded(quint32(codeTable<Job>.size()))).value;
}

// Up to two and a half jobs in, so that what was done before is examined as well.
StressRun::Moment StressRun::momentIn(const Extent& extent)
{
    const auto within = [&](int length) { return 1 + m_random.bounded(length * 5 / 2 + 1); };
    if (m_random.bounded(2) == 0)
        return { .step = within(extent.steps) };
    return { .microseconds = within(extent.microseconds) };
}

StressRun::Extent StressRun::measure(Job job)
{
    reset();
    const quint32 seed = m_random.generate();
    const Outcome outcome = inChild([&] {
        StressJobs jobs(m_root.path(), seed);
        QElapsedTimer timer;
        if (job != Job::Start && StressCheck::start().isEmpty())
            jobs.provideFor(job);
        timer.start();
        FileFaults::arm(Effect::CountOnly);
        if (job == Job::Start)
            static_cast<void>(StressCheck::start());
        jobs.run(job);
        tellLine(u"microseconds\t%1"_s.arg(timer.nsecsElapsed() / 1000));
        tellLine(u"steps\t%1"_s.arg(FileFaults::disarm()));
    });
    return { .steps = numberOf(outcome.lines, u"steps"_s),
        .microseconds = numberOf(outcome.lines, u"microseconds"_s),
        .seed = seed };
}

StressRun::Outcome StressRun::disturbed(Job job, Moment moment, quint32 seed)
{
    const auto work = [&] {
        StressJobs jobs(m_root.path(), seed);
        if (job != Job::Start && StressCheck::start().isEmpty())
            jobs.provideFor(job);
        tellLine(u"ready"_s);
        FileFaults::arm(moment.step > 0 ? Effect::Kill : Effect::CountOnly, moment.step);
        if (job == Job::Start)
            static_cast<void>(StressCheck::start());
        for (int i = 0; job != Job::Start && i < mostJobsInARound; ++i)
            jobs.run(job);
    };
    return inChild(work, moment.step > 0 ? std::nullopt : std::optional(moment.microseconds));
}

QStringList StressRun::disturb(Job job, Moment moment, quint32 seed, Figures& figures)
{
    const Outcome outcome = disturbed(job, moment, seed);
    figures.kills[job] += outcome.killed ? 1 : 0;
    figures.atSystemCalls += outcome.killed && moment.step > 0 ? 1 : 0;
    figures.undisturbed += outcome.killed ? 0 : 1;
    return outcome.lines;
}

void StressRun::examine(const QStringList& lines, const QString& title, Figures& figures)
{
    const StressCheck::Claims claims { lines, m_prepared };
    const Outcome examined = inChild([&] {
        tellFindings(StressCheck::examine(claims, StressJobs::backupTarget(m_root.path())));
    });
    const StressFindings found = findingsIn(examined.lines);
    StressFindings& sums = figures.sums;
    for (const QString& problem : found.problems)
        sums.problems += title + u": "_s + problem;
    sums.levelsRepaired += found.levelsRepaired;
    sums.documentsRepaired += found.documentsRepaired;
    sums.restoresRepaired += found.restoresRepaired;
    sums.filesReported = qMax(sums.filesReported, found.filesReported);
    sums.copiesReported = qMax(sums.copiesReported, found.copiesReported);
    sums.unfinishedBackups += found.unfinishedBackups;
    if (!found.problems.isEmpty())
        reset();
}

void StressRun::round(int number, Figures& figures)
{
    if (number % roundsPerLedger == 1)
        reset();
    const Job job = nextJob();
    QStringList lines;
    const auto kill = [&](Job which) {
        const Moment moment = momentIn(m_extents.value(which));
        lines += disturb(which, moment, m_random.generate(), figures);
    };
    if (job == Job::Start) {
        const std::array worthRepairing { Job::SaveEntry, Job::Regenerate, Job::Restore };
        kill(worthRepairing.at(m_random.bounded(quint32(worthRepairing.size()))));
    }
    kill(job);
    examine(lines, u"round %1, %2"_s.arg(QString::number(number), codeOf(job)), figures);
}
