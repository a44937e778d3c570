#include "services/DocumentSamples.h"

#include "db/ProfileDao.h"
#include "db/TransactionDao.h"
#include "services/documents/DocumentTemplates.h"
#include "services/documents/DocumentTexts.h"

using namespace Qt::StringLiterals;

namespace DocumentSamples {

namespace {

QString html(DocumentRecord record, const QString& number, const QList<Transaction>& covered = {})
{
    record.docNo = number;
    return DocumentTemplates::compose(company(), record, covered);
}

} // namespace

CompanyProfile company()
{
    CompanyProfile profile;
    profile.companyName = u"杭州山岚设计有限公司"_s;
    profile.creditCode = u"91350100M000100Y43"_s;
    profile.shareholderName = u"林岚"_s;
    return profile;
}

Transaction entry(int number, Direction direction)
{
    static const QStringList summaries { u"备用金"_s, u"借支差旅备用金（项目 A4 样册印刷）"_s,
        u"归还股东垫付的办公室租金及物业费，合同 HT-2025-0007"_s };
    return { .transDate = QDate(2025, 1, 1).addDays(number),
        .summary = summaries.at(number % summaries.size()),
        .direction = direction,
        .amountFen = 1'234'567LL * (number + 1),
        .ownerAccountType = AccountType::Company,
        .counterpartyName = u"林岚"_s,
        .counterpartyAccountType = AccountType::Private,
        .category
        = direction == Direction::Out ? Category::ShareholderOut : Category::ShareholderIn };
}

QList<Transaction> entries(int count)
{
    QList<Transaction> all;
    for (int i = 0; i < count; ++i)
        all += entry(i);
    return all;
}

AnnualDecisionInput annualInput()
{
    return { .year = 2025,
        .items = DocumentTexts::annualReportItems(2025)
            + QStringList { DocumentTexts::profitDistributed(10'700'053, u"银行转账"_s) },
        .decisionDate = QDate(2026, 3, 31) };
}

FundDecisionInput fundInput(const QList<qint64>& ids)
{
    return { .direction = Direction::Out,
        .fundNature = u" 备用金 "_s,
        .transactionIds = ids,
        .decisionDate = QDate(2025, 6, 30),
        .settleDate = QDate(2025, 12, 31),
        .extraText = u"凭票据报销，\n余款退回对公账户。"_s };
}

IndependenceStatementInput independenceInput()
{
    return { .baseDate = QDate(2025, 12, 31),
        .measures = DocumentTexts::independenceMeasures(),
        .furtherMeasures = u" 聘请代理记账机构按月记账 "_s };
}

QString annualHtml(const QStringList& furtherItems)
{
    AnnualDecisionInput input = annualInput();
    input.items += furtherItems;
    return html(DocumentRules::draft(input), u"KYR-ND-2025-0001"_s);
}

QString fundHtml(int entryCount)
{
    return fundHtml(entries(entryCount));
}

QString fundHtml(const QList<Transaction>& covered)
{
    return html(DocumentRules::draft(fundInput({ 1 })), u"KYR-FD-2025-0001"_s, covered);
}

QString independenceHtml()
{
    return html(DocumentRules::draft(independenceInput()), u"KYR-DC-2025-0001"_s);
}

bool storeCompany()
{
    return ProfileDao().save(company());
}

QList<qint64> storeEntries(int count, Direction direction)
{
    QList<qint64> ids;
    for (int i = 0; i < count; ++i) {
        Transaction stored = entry(i, direction);
        if (TransactionDao().insert(stored))
            ids += stored.id;
    }
    return ids;
}

} // namespace DocumentSamples
