// Archiving the largest voucher beside the tools of the system: its digest by sha256sum, then its
// copy by cp, the copies of both on the disk before they count as done.

#include "core/AppPaths.h"
#include "services/FileRules.h"
#include "services/vouchers/VoucherAssets.h"
#include "services/vouchers/VoucherService.h"
#include "services/vouchers/VoucherSource.h"
#include "support/BenchRun.h"
#include "support/PairedTiming.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QString makeSource()
{
    const QString path = AppPaths::dataDir() + u"/source.pdf"_s;
    QByteArray content(FileRules::maxFileSize, Qt::Uninitialized);
    QRandomGenerator(42).fillRange(
        reinterpret_cast<quint32*>(content.data()), content.size() / qsizetype(sizeof(quint32)));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("The voucher of the benchmark cannot be written");
    return path;
}

QString archive(const QString& source)
{
    const VoucherSource read = VoucherSource::read(source);
    const VoucherCopy copy(read.content, read.extension);
    if (!copy.isWritten())
        qFatal("The copy failed");
    return read.sha256;
}

QByteArray outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("%s failed", qUtf8Printable(program));
    return process.readAllStandardOutput();
}

QString archiveWithTools(const QString& source)
{
    const QString copy = AppPaths::voucherAssetsDir() + u"/copy.pdf"_s;
    const QByteArray digest = outputOf(u"sha256sum"_s, { source });
    outputOf(u"cp"_s, { source, copy });
    const int file = ::open(qPrintable(copy), O_RDONLY);
    if (file < 0 || ::fdatasync(file) != 0 || ::close(file) != 0 || !QFile::remove(copy))
        qFatal("The copy cannot be synced");
    return QString::fromLatin1(digest.left(64));
}

void archiveLargest(benchmark::State& state)
{
    const QString source = makeSource();
    if (archive(source) != archiveWithTools(source))
        state.SkipWithError("the two sides find different digests");
    measurePair(
        state, [&] { archive(source); }, [&] { archiveWithTools(source); });
}

void digestLargest(benchmark::State& state)
{
    const QString source = makeSource();
    measurePair(
        state, [&] { benchmark::DoNotOptimize(VoucherService::computeSha256(source)); },
        [&] { outputOf(u"sha256sum"_s, { source }); });
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    if (!QDir(AppPaths::dataDir()).removeRecursively() || !AppPaths::ensureDirs())
        return 1;
    for (auto* benchmark : { benchmark::RegisterBenchmark("archive_20MB", archiveLargest),
             benchmark::RegisterBenchmark("digest_20MB", digestLargest) })
        benchmark->Iterations(31)->UseManualTime()->Unit(benchmark::kMillisecond);
    const int status = BenchRun::runAll(argc, argv);
    QDir(AppPaths::dataDir()).removeRecursively();
    return status;
}
