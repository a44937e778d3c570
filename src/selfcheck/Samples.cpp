#include "selfcheck/Samples.h"

using namespace Qt::StringLiterals;

namespace Samples {

namespace {

const QDate day(2024, 2, 29);

} // namespace

QString awkwardText()
{
    return u"自检 <b>\"'%1;&，𠮷"_s;
}

CompanyProfile company()
{
    CompanyProfile profile;
    profile.companyName = awkwardText();
    profile.creditCode = u"91350100M000100Y43"_s;
    profile.shareholderName = u"自检股东"_s;
    return profile;
}

Project project()
{
    return { .name = awkwardText(), .clientName = u"自检客户"_s, .startDate = day };
}

Contract contract(qint64 projectId)
{
    return { .projectId = projectId,
        .name = awkwardText(),
        .partyB = u"自检乙方"_s,
        .amountFen = 1'234'567,
        .signDate = day };
}

Transaction riskyEntry()
{
    return { .transDate = day,
        .summary = awkwardText(),
        .direction = Direction::In,
        .amountFen = 1'234'567,
        .ownerAccountType = AccountType::Private,
        .counterpartyName = u"自检客户"_s,
        .counterpartyAccountType = AccountType::Company,
        .category = Category::BusinessIncome };
}

Voucher voucher()
{
    return { .name = awkwardText(),
        .voucherType = VoucherType::Invoice,
        .voucherDate = day,
        .originalFileName = u"自检.pdf"_s,
        .storedPath = u"voucher_assets/selfcheck.pdf"_s,
        .fileExt = u"pdf"_s,
        .fileSize = 3,
        .sha256 = u"-"_s };
}

DocumentRecord document(const QString& number)
{
    return { .docType = DocType::AnnualDecision,
        .docNo = number,
        .title = awkwardText(),
        .docYear = day.year(),
        .docDate = day,
        .contentHtml = u"<p>自检</p>"_s,
        .filePath = u"selfcheck.pdf"_s };
}

} // namespace Samples
