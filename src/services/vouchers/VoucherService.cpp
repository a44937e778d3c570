#include "services/vouchers/VoucherService.h"

#include "core/TextRules.h"
#include "db/DbTransaction.h"
#include "db/LinkDao.h"
#include "db/TransactionDao.h"
#include "db/VoucherDao.h"
#include "services/risk/RiskService.h"
#include "services/vouchers/Sha256.h"
#include "services/vouchers/VoucherAssets.h"
#include "services/vouchers/VoucherSource.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <optional>
#include <set>

using namespace Qt::StringLiterals;

namespace {

using TransactionIds = std::set<qint64>;

/// Why something failed, in Chinese; nothing when it did not.
using Problem = std::optional<QString>;

// A file such as ".jpg" has no name in front of its extension.
QString defaultName(const QString& fileName)
{
    const QString baseName = QFileInfo(fileName).completeBaseName();
    return TextRules::withoutDirectionMarks(TextRules::isBlank(baseName) ? fileName : baseName);
}

void describe(Voucher& voucher, const VoucherDescription& description)
{
    voucher.name = TextRules::isBlank(description.name) ? defaultName(voucher.originalFileName)
                                                        : TextRules::asStored(description.name);
    voucher.voucherType = description.voucherType;
    voucher.voucherDate
        = description.voucherDate.isValid() ? description.voucherDate : QDate::currentDate();
    voucher.note = TextRules::asStored(description.note);
}

Voucher voucherOf(const VoucherImportRequest& request, const VoucherSource& source)
{
    Voucher voucher { .originalFileName = source.fileName,
        .fileExt = source.extension,
        .fileSize = source.content.size(),
        .sha256 = source.sha256 };
    describe(voucher, { request.name, request.voucherType, request.voucherDate, request.note });
    return voucher;
}

bool linkProject(LinkDao& links, qint64 voucherId, qint64 projectId)
{
    return projectId <= 0
        || links.link(SourceType::Voucher, voucherId, TargetType::Project, projectId);
}

bool linkTransactions(LinkDao& links, qint64 voucherId, const QList<qint64>& transactionIds)
{
    return std::all_of(transactionIds.begin(), transactionIds.end(), [&](qint64 id) {
        return links.link(SourceType::Voucher, voucherId, TargetType::Transaction, id);
    });
}

// Does all of a change or nothing of it.
template <typename Write> Problem inTransaction(const TransactionIds& affected, Write write)
{
    DbTransaction transaction;
    if (!transaction.isOpen())
        return u"数据库事务无法开启"_s;
    if (const Problem problem = write())
        return problem;
    // Left behind by an evaluation that fails, which is only logged.
    if (TransactionDao entries; !affected.empty() && !entries.setEvaluationDue())
        qWarning("The ledger cannot be marked as behind: %s", qUtf8Printable(entries.lastError()));
    // Each entry is a change of its own, and each change evaluates the whole ledger.
    for (std::size_t i = 0; i < affected.size(); ++i)
        RiskService().reevaluateAll();
    if (!transaction.commit())
        return u"事务提交失败，请重试"_s;
    return {};
}

Problem store(Voucher& voucher, qint64 projectId, const QList<qint64>& transactionIds)
{
    return inTransaction({ transactionIds.begin(), transactionIds.end() }, [&]() -> Problem {
        VoucherDao vouchers;
        if (!vouchers.insert(voucher))
            return vouchers.lastError();
        LinkDao links;
        if (!linkProject(links, voucher.id, projectId)
            || !linkTransactions(links, voucher.id, transactionIds))
            return u"凭证关联写入失败"_s;
        return {};
    });
}

// A voucher that is to be changed, with the entries that it proves so far.
struct StoredVoucher {
    Voucher voucher;
    TransactionIds transactionIds;
};

Problem load(qint64 id, StoredVoucher& stored)
{
    VoucherDao vouchers;
    const std::optional<Voucher> voucher = vouchers.findById(id);
    if (!voucher)
        return vouchers.lastError().isEmpty() ? u"凭证不存在或已被删除"_s
                                              : u"凭证记录读取失败：%1"_s.arg(vouchers.lastError());
    stored.voucher = *voucher;
    LinkDao links;
    for (const EntityLink& link : links.linksBySource(SourceType::Voucher, id)) {
        if (link.targetType == TargetType::Transaction)
            stored.transactionIds.insert(link.targetId);
    }
    // Entries that are overlooked here would keep the risk that they had with the voucher.
    if (!links.lastError().isEmpty())
        return links.lastError();
    return {};
}

Problem replaceDescriptionAndLinks(const StoredVoucher& stored, qint64 projectId,
    const QList<qint64>& transactionIds, const TransactionIds& affected)
{
    return inTransaction(affected, [&]() -> Problem {
        const qint64 id = stored.voucher.id;
        VoucherDao vouchers;
        if (!vouchers.update(stored.voucher))
            return vouchers.lastError();
        LinkDao links;
        if (!links.unlinkAllFromSource(SourceType::Voucher, id))
            return u"旧关联清除失败"_s;
        if (!linkProject(links, id, projectId))
            return u"项目关联写入失败"_s;
        if (!linkTransactions(links, id, transactionIds))
            return u"流水关联写入失败"_s;
        return {};
    });
}

Problem removeRowAndLinks(const StoredVoucher& stored)
{
    return inTransaction(stored.transactionIds, [&]() -> Problem {
        LinkDao links;
        if (!links.unlinkAllFromSource(SourceType::Voucher, stored.voucher.id))
            return links.lastError();
        VoucherDao vouchers;
        if (!vouchers.remove(stored.voucher.id))
            return vouchers.lastError();
        return {};
    });
}

void removeCopy(const QString& storedPath)
{
    if (VoucherDao().isFileInUse(storedPath))
        qWarning("The voucher file %s belongs to another voucher too and stays",
            qUtf8Printable(storedPath));
    else
        VoucherAssets::remove(storedPath);
}

bool report(const Problem& problem, QString* errorOut)
{
    if (errorOut)
        *errorOut = problem.value_or(QString());
    return !problem;
}

VoucherImportResult failedImport(bool duplicate, const QString& error)
{
    return { .duplicate = duplicate, .error = error };
}

} // namespace

namespace VoucherService {

VoucherImportResult importVoucher(const VoucherImportRequest& request, qint64 projectId,
    const QList<qint64>& transactionIds, bool* duplicateOut)
{
    const VoucherSource source = VoucherSource::read(request.sourcePath);
    if (!source.problem.isEmpty())
        return failedImport(false, source.problem);

    Voucher voucher = voucherOf(request, source);
    const bool duplicate = VoucherDao().existsBySha256(voucher.sha256);
    if (duplicateOut)
        *duplicateOut = duplicate;

    VoucherCopy copy(source.content, source.extension);
    if (!copy.isWritten())
        return failedImport(
            duplicate, u"复制文件到凭证库失败（磁盘空间或占用）：%1"_s.arg(source.fileName));
    voucher.storedPath = copy.storedPath();
    if (const Problem problem = store(voucher, projectId, transactionIds))
        return failedImport(duplicate, *problem);
    copy.keep();
    return { .ok = true,
        .voucherId = voucher.id,
        .duplicate = duplicate,
        .storedPath = voucher.storedPath };
}

QString computeSha256(const QString& path, bool* okOut)
{
    if (okOut)
        *okOut = false;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {};
    Sha256 digest;
    QByteArray piece(qsizetype(256) * 1024, Qt::Uninitialized);
    qint64 count = 0;
    while ((count = file.read(piece.data(), piece.size())) > 0)
        digest.add(QByteArrayView(piece).first(count));
    const QString text = count == 0 ? digest.hexDigest() : QString();
    if (okOut)
        *okOut = !text.isEmpty();
    return text;
}

bool updateVoucher(qint64 voucherId, const VoucherDescription& description, qint64 projectId,
    const QList<qint64>& transactionIds, QString* errorOut)
{
    StoredVoucher stored;
    if (const Problem problem = load(voucherId, stored))
        return report(problem, errorOut);
    describe(stored.voucher, description);
    // Those that lose the voucher and those that gain it.
    TransactionIds affected = stored.transactionIds;
    affected.insert(transactionIds.begin(), transactionIds.end());
    return report(
        replaceDescriptionAndLinks(stored, projectId, transactionIds, affected), errorOut);
}

bool deleteVoucher(qint64 voucherId, QString* errorOut)
{
    StoredVoucher stored;
    if (const Problem problem = load(voucherId, stored))
        return report(problem, errorOut);
    if (!report(removeRowAndLinks(stored), errorOut))
        return false;
    removeCopy(stored.voucher.storedPath);
    return true;
}

} // namespace VoucherService
