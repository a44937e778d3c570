#include "core/SafeFile.h"
#include "db/VoucherDao.h"
#include "selfcheck/Findings.h"
#include "selfcheck/Samples.h"
#include "selfcheck/Suites.h"
#include "services/csv/CsvExport.h"
#include "services/vouchers/VoucherAssets.h"
#include "services/vouchers/VoucherService.h"
#include "services/vouchers/VoucherSource.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

// Looking for every file of a large archive would take too long; the newest are those that a
// failing disk or a careless clean-up most likely shows on.
constexpr qsizetype mostFilesLookedFor = 500;

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void readFile(Findings& findings, const QTemporaryDir& folder)
{
    const QString path = folder.filePath(u"自检.PDF"_s);
    const QString other = folder.filePath(u"selfcheck.exe"_s);
    if (!findings.expect(
            SafeFile::write(path, "abc") && SafeFile::write(other, "abc"), u"临时文件无法写入"_s))
        return;
    const QString digest = u"ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"_s;
    const VoucherSource source = VoucherSource::read(path);
    findings.expect(source.problem.isEmpty() && source.extension == u"pdf"
            && source.content == "abc" && source.sha256 == digest,
        u"凭证文件读取不正确"_s);
    bool read = false;
    findings.expect(
        VoucherService::computeSha256(path, &read) == digest && read, u"文件指纹计算不正确"_s);
    findings.expect(!VoucherSource::read(other).problem.isEmpty(), u"不支持的文件类型没有被拒绝"_s);
}

void lookForFiles(Findings& findings)
{
    VoucherDao dao;
    const QList<Voucher> vouchers = dao.search({});
    if (!findings.expect(dao.lastError().isEmpty(), u"凭证无法读取：%1"_s.arg(dao.lastError())))
        return;
    const qsizetype count = std::min(vouchers.size(), mostFilesLookedFor);
    QStringList missing;
    for (const Voucher& voucher : vouchers.first(count)) {
        const QString path = VoucherAssets::existingFile(voucher.storedPath);
        if (path.isEmpty() || QFileInfo(path).size() != voucher.fileSize)
            missing += voucher.name;
    }
    findings.expect(missing.isEmpty(),
        u"%1 张凭证的文件缺失或大小不符（如「%2」）"_s.arg(
            QString::number(missing.size()), missing.value(0)));
    if (count < vouchers.size())
        findings.remark(u"核对了最近 %1 张凭证的文件"_s.arg(count));
    if (const QStringList strangers = VoucherAssets::filesWithoutRow(); !strangers.isEmpty())
        findings.remark(
            u"凭证文件夹中有 %1 个文件没有凭证记录（如 %2），不影响使用，也不会被删除"_s.arg(
                QString::number(strangers.size()), strangers.first()));
}

} // namespace

void Suites::vouchers(Findings& findings)
{
    const QTemporaryDir folder;
    if (findings.expect(folder.isValid(), u"临时文件夹无法创建"_s))
        readFile(findings, folder);
    lookForFiles(findings);
}

void Suites::csv(Findings& findings)
{
    const QTemporaryDir folder;
    if (!findings.expect(folder.isValid(), u"临时文件夹无法创建"_s))
        return;
    const QString ledger = folder.filePath(u"ledger.csv"_s);
    const CsvExport::Result exported = CsvExport::exportLedger({ Samples::riskyEntry() }, ledger);
    findings.expect(exported.ok, u"台账无法导出：%1"_s.arg(exported.message));
    const QByteArray bytes = bytesOf(ledger);
    findings.expect(bytes.startsWith("\xEF\xBB\xBF"
                                     "ID,日期,")
            && bytes.endsWith("\r\n") && bytes.count("\r\n") == 2,
        u"台账文件的格式不正确"_s);
    findings.expect(bytes.contains(",12345.67,") && bytes.contains("\"自检 <b>\"\"'%1;&，𠮷\""),
        u"台账文件的内容不正确"_s);

    const QString report = folder.filePath(u"report.csv"_s);
    const CsvExport::Result written = CsvExport::exportReport({},
        { { .category = Category::TaxFee, .count = 2, .expenseFen = 305 } }, { .normal = 2 },
        report);
    findings.expect(written.ok && bytesOf(report).contains("合计,2,0.00,3.05,-3.05"),
        u"报表文件的内容不正确"_s);
}
