#include "support/TestLedger.h"

#include "core/TextRules.h"
#include "db/ContractDao.h"
#include "db/DocumentDao.h"
#include "db/LinkDao.h"
#include "db/ProfileDao.h"
#include "db/ProjectDao.h"
#include "db/TransactionDao.h"
#include "db/VoucherDao.h"
#include "support/TestDatabase.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace TestLedger {

namespace {

QString ruleOf(const QString& reason)
{
    if (reason.startsWith(u"私户收取经营款项："))
        return u"R1-1"_s;
    if (reason.startsWith(u"股东个人账户直接支付"))
        return u"R1-2"_s;
    if (reason.startsWith(u"大额转账（≥"))
        return u"R3"_s;
    static const QRegularExpression group(u"^近\\d+天内公私账户互转达(\\d+)笔，"_s);
    const auto match = group.match(reason);
    return match.hasMatch() ? u"R2(%1)"_s.arg(match.captured(1)) : reason;
}

} // namespace

bool storeCompany()
{
    ProfileDao profiles;
    CompanyProfile profile = profiles.load();
    profile.companyName = u"杭州山岚设计有限公司"_s;
    profile.shareholderName = u"林岚"_s;
    return profiles.save(profile);
}

qint64 addProject(const QString& name, const QString& client, ProjectStatus status)
{
    Project project { .name = name, .clientName = client, .status = status };
    return ProjectDao().insert(project) ? project.id : 0;
}

qint64 addContract(qint64 projectId, const QString& name, const QString& date)
{
    Contract contract { .projectId = projectId, .name = name, .partyB = u"对方"_s };
    contract.signDate = TextRules::dateFromText(date);
    return ContractDao().insert(contract) ? contract.id : 0;
}

Transaction entry(const QString& date, Category category, Direction direction, qint64 fen)
{
    Transaction entry;
    entry.transDate = TextRules::dateFromText(date);
    entry.summary = u"摘要"_s;
    entry.counterpartyName = u"对方"_s;
    entry.category = category;
    entry.direction = direction;
    entry.amountFen = fen;
    return entry;
}

qint64 add(Transaction entry)
{
    return TransactionDao().insert(entry) ? entry.id : 0;
}

QString addMany(int count)
{
    return TestDatabase::run(
        { u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) INSERT "
          "INTO transactions (trans_date, summary, direction, amount_fen, owner_account_type, "
          "counterparty_name, category) SELECT '2025-01-01', '摘要', 'out', 10000, 'company', "
          "'对方', 'other' FROM n"_s.arg(count) });
}

qint64 addFundDecision(
    const QList<qint64>& entryIds, const QString& docDate, const QString& settleDate)
{
    DocumentDao documents;
    DocumentRecord decision;
    decision.docType = DocType::FundDecision;
    decision.docDate = TextRules::dateFromText(docDate);
    decision.settleDate = TextRules::dateFromText(settleDate);
    decision.fundDirection = Direction::Out;
    decision.docNo = documents.nextDocNo(DocType::FundDecision, 2025);
    if (!documents.insert(decision))
        return 0;
    LinkDao links;
    for (const qint64 id : entryIds) {
        if (!links.link(SourceType::Document, decision.id, TargetType::Transaction, id))
            return 0;
    }
    return decision.id;
}

qint64 addVoucher(qint64 entryId)
{
    Voucher voucher;
    voucher.name = u"回单"_s;
    voucher.voucherDate = QDate(2025, 1, 1);
    if (!VoucherDao().insert(voucher))
        return 0;
    const bool done = entryId == 0
        || LinkDao().link(SourceType::Voucher, voucher.id, TargetType::Transaction, entryId);
    return done ? voucher.id : 0;
}

QString autoRisk(qint64 entryId)
{
    const auto entry = TransactionDao().findById(entryId);
    if (!entry)
        return u"(no entry)"_s;
    QStringList rules;
    for (const QString& reason : entry->riskReasons)
        rules += ruleOf(reason);
    return codeOf(entry->riskAutoLevel) + u'|' + rules.join(u';');
}

} // namespace TestLedger
