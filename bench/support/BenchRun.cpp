#include "support/BenchRun.h"

#include <QString>

#include <benchmark/benchmark.h>

#include <cstdio>

namespace {

void showWarnings(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type != QtInfoMsg && type != QtDebugMsg)
        std::fprintf(stderr, "%s\n", qUtf8Printable(text));
}

} // namespace

namespace BenchRun {

void keepQuiet()
{
    qInstallMessageHandler(showWarnings);
}

int runAll(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace BenchRun
