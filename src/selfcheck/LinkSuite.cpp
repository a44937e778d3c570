#include "db/LinkDao.h"
#include "db/TransactionDao.h"
#include "db/VoucherDao.h"
#include "selfcheck/CheckDao.h"
#include "selfcheck/Findings.h"
#include "selfcheck/Samples.h"
#include "selfcheck/Suites.h"

using namespace Qt::StringLiterals;

namespace {

struct End {
    QString column; // of a link, without "_type" or "_id"
    QString code;
    QString table;
    QString label; // Chinese
};

const QList<End>& ends()
{
    static const QList<End> all {
        { u"source"_s, codeOf(SourceType::Voucher), u"vouchers"_s, u"凭证"_s },
        { u"source"_s, codeOf(SourceType::Document), u"documents"_s, u"文书"_s },
        { u"target"_s, codeOf(TargetType::Project), u"projects"_s, u"项目"_s },
        { u"target"_s, codeOf(TargetType::Contract), u"contracts"_s, u"合同"_s },
        { u"target"_s, codeOf(TargetType::Transaction), u"transactions"_s, u"流水"_s },
    };
    return all;
}

void checkStoredLinks(Findings& findings)
{
    CheckDao rows;
    const std::optional<QStringList> broken = rows.texts(u"PRAGMA foreign_key_check"_s);
    findings.expect(broken.has_value(), u"外键无法核对：%1"_s.arg(rows.lastError()));
    if (broken)
        findings.expect(broken->isEmpty(),
            u"%1 行记录指向不存在的记录（%2）"_s.arg(
                QString::number(broken->size()), broken->value(0)));
    for (const End& end : ends()) {
        const std::optional<qint64> lost = rows.number(
            u"SELECT COUNT(*) FROM entity_links WHERE %1_type = '%2' AND %1_id NOT IN "
            "(SELECT id FROM %3)"_s.arg(end.column, end.code, end.table));
        findings.expect(lost == 0,
            u"%1 条关联指向不存在的%2"_s.arg(QString::number(lost.value_or(-1)), end.label));
    }
}

void tryLinks(Findings& findings)
{
    Transaction entry = Samples::riskyEntry();
    Voucher voucher = Samples::voucher();
    if (!findings.expect(TransactionDao().insert(entry) && VoucherDao().insert(voucher),
            u"试验用的记录无法写入"_s))
        return;
    LinkDao links;
    const auto link = [&] {
        return links.link(SourceType::Voucher, voucher.id, TargetType::Transaction, entry.id);
    };
    const auto count = [&] { return links.countVouchersFor(TargetType::Transaction, entry.id); };
    const bool linked = link();
    const bool linkedAgain = link();
    findings.expect(linked && linkedAgain && count() == 1, u"凭证与流水的关联写入不正确"_s);
    findings.expect(
        TransactionDao().remove(entry.id) && count() == 0, u"删除流水后关联没有一并清除"_s);
}

} // namespace

void Suites::links(Findings& findings)
{
    checkStoredLinks(findings);
    tryLinks(findings);
}
