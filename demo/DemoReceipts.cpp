#include "DemoReceipts.h"

#include "db/LinkDao.h"
#include "DemoClock.h"
#include "DemoCompany.h"
#include "ReceiptPainter.h"
#include "services/vouchers/VoucherService.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>

#include <algorithm>

using namespace Qt::StringLiterals;

// A paper that is to be drawn: on one sheet, as a picture or as a PDF file.
struct DemoReceipts::Paper {
    VoucherType type = VoucherType::Other;
    QDate date;
    QString name; // Chinese, also of the file
    QString suffix;
    QSize size;
    Drawing draw;
};

namespace {

bool drawPicture(const QString& path, QSize size, const std::function<void(QPainter&)>& draw)
{
    QImage sheet(size, QImage::Format_RGB32);
    QPainter painter(&sheet);
    draw(painter);
    painter.end();
    return sheet.save(path);
}

bool drawPdf(const QString& path, QSize size, const std::function<void(QPainter&)>& draw)
{
    QPdfWriter writer(path);
    const QPageSize page(QSizeF(size) * 0.75, QPageSize::Point, {}, QPageSize::ExactMatch);
    writer.setPageLayout({ page, QPageLayout::Portrait, {}, QPageLayout::Point });
    writer.setResolution(288);
    QPainter painter;
    if (!painter.begin(&writer))
        return false;
    painter.scale(static_cast<qreal>(writer.width()) / size.width(),
        static_cast<qreal>(writer.height()) / size.height());
    draw(painter);
    return painter.end();
}

// What a file may not be called.
QString fileNamePart(QString text)
{
    for (const QChar forbidden : u"/\\:*?\"<>|（）："_s)
        text.replace(forbidden, u'_');
    return text;
}

} // namespace

DemoReceipts::DemoReceipts(const QString& folder)
    : m_folder(folder)
{
    QDir().mkpath(m_folder);
}

Problem DemoReceipts::archiveEntries(const QList<DemoEntry>& entries)
{
    for (const DemoEntry& planned : entries) {
        for (const VoucherType type : planned.vouchers) {
            if (const Problem problem = archiveEntry(planned, type, true))
                return problem;
        }
    }
    return {};
}

Problem DemoReceipts::archiveEntry(const DemoEntry& planned, VoucherType type, bool linked)
{
    const CompanyProfile company = DemoCompany::profile();
    const Transaction& entry = planned.entry;
    Paper paper { .type = type,
        .date = entry.transDate,
        .name = u"%1 %2"_s.arg(labelOf(type), entry.summary),
        .suffix = u"png"_s };
    switch (type) {
    case VoucherType::Invoice:
        paper.suffix = u"pdf"_s;
        paper.size = ReceiptPainter::invoiceSize;
        paper.draw
            = [&](QPainter& painter) { ReceiptPainter::drawInvoice(painter, company, entry); };
        break;
    case VoucherType::Chat:
        paper.size = ReceiptPainter::chatSize;
        paper.draw = [&](QPainter& painter) { ReceiptPainter::drawChat(painter, entry); };
        break;
    default:
        paper.size = ReceiptPainter::bankReceiptSize;
        paper.draw
            = [&](QPainter& painter) { ReceiptPainter::drawBankReceipt(painter, company, entry); };
        break;
    }
    return linked ? archive(paper, entry.projectId.value_or(0), { entry.id })
                  : archive(paper, 0, {});
}

Problem DemoReceipts::archiveProjects(const DemoCompany& company)
{
    const CompanyProfile profile = DemoCompany::profile();
    for (const Contract& contract : company.contracts()) {
        const Paper paper { VoucherType::Contract, contract.signDate,
            u"%1（%2）"_s.arg(contract.name, contract.partyB), u"pdf"_s, ReceiptPainter::pageSize,
            [&](QPainter& painter) { ReceiptPainter::drawContract(painter, profile, contract); } };
        if (const Problem problem = archive(paper, contract.projectId, {}, contract.id))
            return problem;
    }
    for (const Project& project : company.projects()) {
        if (project.status != ProjectStatus::Completed)
            continue;
        const Paper paper { VoucherType::Delivery, project.endDate,
            u"交付验收单 %1"_s.arg(project.name), u"pdf"_s, ReceiptPainter::pageSize,
            [&](QPainter& painter) { ReceiptPainter::drawDelivery(painter, profile, project); } };
        if (const Problem problem = archive(paper, project.id, {}))
            return problem;
    }
    return {};
}

Problem DemoReceipts::archiveUnlinked(const QList<DemoEntry>& entries)
{
    int left = 3;
    for (auto planned = entries.rbegin(); planned != entries.rend() && left > 0; ++planned) {
        if (!planned->vouchers.isEmpty() || planned->entry.category != Category::BusinessExpense)
            continue;
        if (const Problem problem = archiveEntry(*planned, VoucherType::BankReceipt, false))
            return problem;
        --left;
    }
    return left == 0 ? Problem() : u"no entries left for unlinked vouchers"_s;
}

Problem DemoReceipts::archive(
    const Paper& paper, qint64 projectId, const QList<qint64>& transactionIds, qint64 contractId)
{
    DemoClock::set(std::min(paper.date, DemoClock::today()), 19);
    const QString path = pathOf(paper);
    const bool drawn = paper.suffix == u"pdf" ? drawPdf(path, paper.size, paper.draw)
                                              : drawPicture(path, paper.size, paper.draw);
    if (!drawn)
        return u"%1 could not be drawn"_s.arg(path);
    const VoucherImportResult result
        = VoucherService::importVoucher({ .sourcePath = path,
                                            .name = paper.name,
                                            .voucherType = paper.type,
                                            .voucherDate = paper.date },
            projectId, transactionIds);
    if (!result.ok)
        return u"%1 could not be archived: %2"_s.arg(path, result.error);
    if (result.duplicate)
        return u"%1 was archived twice"_s.arg(path);
    LinkDao links;
    if (contractId > 0
        && !links.link(SourceType::Voucher, result.voucherId, TargetType::Contract, contractId))
        return links.lastError();
    ++m_archived;
    return {};
}

QString DemoReceipts::pathOf(const Paper& paper) const
{
    const QString base
        = u"%1/%2_%3"_s.arg(m_folder, paper.date.toString(u"yyyyMMdd"), fileNamePart(paper.name));
    QString path = u"%1.%2"_s.arg(base, paper.suffix);
    for (int number = 2; QFileInfo::exists(path); ++number)
        path = u"%1_%2.%3"_s.arg(base, QString::number(number), paper.suffix);
    return path;
}
