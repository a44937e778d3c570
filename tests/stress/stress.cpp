// Kills a process that works on the records, thousands of times if asked to, and examines what each
// kill leaves.
//
//   stress --seconds 40                 as long as that
//   stress --kills 2000 --seed 7        so many kills, from this seed
//   stress --kills 200 --only restore   of one kind; a wrong name lists them
//   stress --every-step                 each kind at each of its system calls, one after the other
//
// The exit status is 0 when nothing was lost, mixed or left half-done.

#include "stress/StressRun.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

QTextStream& out()
{
    static QTextStream stream(stdout);
    return stream;
}

void quiet(QtMsgType, const QMessageLogContext&, const QString&) { }

void print(const StressRun::Figures& figures)
{
    int all = 0;
    for (const auto& row : codeTable<Job>) {
        all += figures.kills.value(row.value);
        out() << u"%1 %2\n"_s.arg(row.label, -24).arg(figures.kills.value(row.value), 6);
    }
    const StressFindings& sums = figures.sums;
    out() << "kills                    " << all << ", " << figures.atSystemCalls
          << " of them at a system call; " << figures.undisturbed << " came too late\n"
          << "repaired by the start    " << sums.restoresRepaired << " restores, "
          << sums.documentsRepaired << " PDFs, " << sums.levelsRepaired << " times the levels\n"
          << "recognised as no backup  " << sums.unfinishedBackups << "\n"
          << "reported, at most        " << sums.filesReported << " PDFs, " << sums.copiesReported
          << " voucher files\n";
    for (const QString& problem : sums.problems)
        out() << "FAILED " << problem << '\n';
    out() << "failures                 " << sums.problems.size() << Qt::endl;
}

std::optional<Job> jobOf(const QString& code)
{
    for (const auto& row : codeTable<Job>) {
        if (row.code == code)
            return row.value;
    }
    return {};
}

QString namesOfJobs()
{
    QStringList names;
    for (const auto& row : codeTable<Job>)
        names += row.code.toString();
    return names.join(u' ');
}

} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    QCoreApplication::setApplicationVersion(u"1.0.0"_s);
    qInstallMessageHandler(quiet);
    const quint32 chance = QRandomGenerator::global()->generate() % 1'000'000;
    QCommandLineParser parser;
    parser.addOptions({ { u"kills"_s, u"how many"_s, u"number"_s, u"0"_s },
        { u"seconds"_s, u"at most so long"_s, u"number"_s, u"0"_s },
        { u"seed"_s, u"of a run to repeat"_s, u"number"_s, QString::number(chance) },
        { u"every-step"_s, u"at each system call in turn"_s },
        { u"only"_s, u"one kind: "_s + namesOfJobs(), u"kind"_s } });
    parser.addHelpOption();
    parser.process(app);
    StressRun::Options options { .kills = parser.value(u"kills"_s).toInt(),
        .seconds = parser.value(u"seconds"_s).toInt(),
        .seed = parser.value(u"seed"_s).toUInt(),
        .only = jobOf(parser.value(u"only"_s)) };
    const bool everyStep = parser.isSet(u"every-step"_s);
    const bool hasEnd = everyStep || options.kills > 0 || options.seconds > 0;
    if (!hasEnd || (parser.isSet(u"only"_s) && !options.only))
        parser.showHelp(2);

    out() << "seed                     " << options.seed << Qt::endl;
    StressRun run(options);
    if (const QString problem = run.prepare(); !problem.isEmpty()) {
        out() << "cannot begin: " << problem << Qt::endl;
        return 2;
    }
    const StressRun::Figures figures = everyStep ? run.runEveryStep() : run.run();
    print(figures);
    const bool anyKill = !figures.kills.isEmpty();
    return anyKill && figures.sums.problems.isEmpty() ? 0 : 1;
}
