#include "services/vouchers/VoucherBatch.h"

#include "core/TextRules.h"

using namespace Qt::StringLiterals;

namespace VoucherBatch {

namespace {

QList<QueuedFile> validOf(QList<QueuedFile> files)
{
    files.removeIf([](const QueuedFile& file) { return !file.isValid(); });
    return files;
}

void note(Outcome& outcome, const QueuedFile& file, const VoucherImportResult& result)
{
    if (!result.ok) {
        outcome.failures += u"%1：%2"_s.arg(file.fileName(), result.error);
        return;
    }
    outcome.voucherIds += result.voucherId;
    outcome.archivedPaths += file.path;
    outcome.duplicates += result.duplicate ? 1 : 0;
}

Notice noticeOfStopped(const Outcome& outcome)
{
    const QString untried = QString::number(outcome.untried);
    const QString archived = QString::number(outcome.voucherIds.size());
    if (outcome.failures.isEmpty())
        return { NoticeLevel::Info, u"已停止入库"_s,
            u"已成功入库 %1 个文件，其余 %2 个仍在队列中。"_s.arg(archived, untried) };
    return { NoticeLevel::Warning, u"已停止入库"_s,
        u"成功 %1 个，失败 %2 个，其余 %3 个仍在队列中：\n%4"_s.arg(archived,
            QString::number(outcome.failures.size()), untried, outcome.failures.join(u'\n')) };
}

QString successText(const Outcome& outcome)
{
    const QString archived = QString::number(outcome.voucherIds.size());
    if (outcome.duplicates == 0)
        return u"成功入库 %1 个文件。"_s.arg(archived);
    return u"成功入库 %1 个文件，其中 %2 个与库内已有文件内容相同（SHA-256 重复），已按你的确认继续入库。"_s
        .arg(archived, QString::number(outcome.duplicates));
}

} // namespace

Outcome run(const Order& order, const Progress& progress)
{
    const QList<QueuedFile> files = validOf(order.files);
    Outcome outcome;
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (!progress(i, files.size())) {
            outcome.untried = files.size() - i;
            break;
        }
        const VoucherImportRequest request { files.at(i).path,
            nameOf(order.description.name, i + 1, files.size()), order.description.voucherType,
            order.description.voucherDate, order.description.note };
        note(outcome, files.at(i),
            VoucherService::importVoucher(request, order.projectId, order.transactionIds));
    }
    return outcome;
}

QString nameOf(const QString& entered, qsizetype number, qsizetype count)
{
    const QString name = TextRules::asStored(entered);
    return count > 1 ? u"%1-%2"_s.arg(name, QString::number(number).rightJustified(2, u'0')) : name;
}

Notice noticeOf(const Outcome& outcome)
{
    const QString failures = outcome.failures.join(u'\n');
    if (outcome.untried > 0)
        return noticeOfStopped(outcome);
    if (outcome.failures.isEmpty())
        return { NoticeLevel::Info, u"入库完成"_s, successText(outcome) };
    if (outcome.voucherIds.isEmpty())
        return { NoticeLevel::Danger, u"入库失败"_s, u"全部文件入库失败：\n%1"_s.arg(failures) };
    return { NoticeLevel::Warning, u"部分失败"_s,
        u"成功 %1 个，失败 %2 个：\n%3"_s.arg(QString::number(outcome.voucherIds.size()),
            QString::number(outcome.failures.size()), failures) };
}

} // namespace VoucherBatch
