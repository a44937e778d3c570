#include "services/documents/DocumentTemplates.h"

#include "core/Money.h"
#include "core/TextRules.h"
#include "services/documents/DocumentRules.h"
#include "services/documents/DocumentTexts.h"

using namespace Qt::StringLiterals;

namespace DocumentTemplates {

namespace {

const QString titleStyle = u"text-align:center; font-size:16pt; font-weight:bold; color:#000000;"_s;
const QString subtitleStyle = u"text-align:center; font-size:10.5pt; color:#4E5969;"_s;
const QString paragraphStyle = u"line-height:180%; margin:6px 0;"_s;
const QString bodyStyle = u"font-size:10.5pt;"_s;
const QString cellStyle = u"border:1px solid #000000; padding:5px; font-size:10pt;"_s;

// Texts are joined piece by piece and never filled into a pattern, so that no user's text can
// take the place of another.

QString line(const QString& style, const QString& html)
{
    return u"<p style=\""_s + style + u"\">"_s + html + u"</p>"_s;
}

QString paragraph(const QString& html)
{
    return line(paragraphStyle + u' ' + bodyStyle, html);
}

QString heading(const QString& text)
{
    return paragraph(u"<b>"_s + text + u"</b>"_s);
}

QString cell(const QString& alignment, const QString& html)
{
    return u"<td style=\""_s + cellStyle + u" text-align:"_s + alignment + u";\">"_s + html
        + u"</td>"_s;
}

struct InfoRow {
    QString label;
    QString value; // the user's text, not yet escaped
};

QString head(
    const QString& title, const QString& subtitle, const std::initializer_list<InfoRow>& rows)
{
    QString html = line(titleStyle, escaped(title)) + line(subtitleStyle, escaped(subtitle));
    html += u"<table width=\"100%\" cellspacing=\"0\" cellpadding=\"3\">"_s;
    for (const InfoRow& row : rows)
        html += u"<tr><td width=\"30%\" style=\""_s + bodyStyle + u"\">"_s + row.label
            + u"：</td><td style=\""_s + bodyStyle + u"\">"_s + escaped(row.value)
            + u"</td></tr>"_s;
    return html + u"</table><hr/>"_s;
}

QString foot()
{
    return u"<table width=\"100%\" cellspacing=\"0\" cellpadding=\"8\" "
           "style=\"margin-top:32px;\"><tr><td width=\"50%\" style=\"font-size:10.5pt; "
           "vertical-align:bottom;\">股东（签名）：＿＿＿＿＿＿＿＿＿＿</td><td width=\"50%\" "
           "style=\"font-size:10.5pt; vertical-align:bottom; "
           "text-align:right;\">日期：　　　　年　　月　　日</td></tr><tr><td colspan=\"2\" "
           "style=\"font-size:10.5pt; text-align:right; "
           "padding-top:20px;\">（盖章处）</td></tr></table>"_s;
}

QString page(const QString& content)
{
    return u"<html><body style=\"font-family:'Microsoft YaHei';\">"_s + content + foot()
        + u"</body></html>"_s;
}

QString numberedItems(const QStringList& items)
{
    QString html;
    int number = 0;
    for (const QString& item : items)
        html += paragraph(DocumentTexts::itemNumber(++number) + escapedLines(item));
    return html;
}

QString decisionHead(const CompanyProfile& profile, const DocumentRecord& record,
    const QString& title, const QString& subtitle)
{
    return head(title, subtitle,
        { { u"股东（法定代表人）"_s, profile.shareholderName },
            { u"统一社会信用代码"_s, profile.creditCode },
            { u"决定日期"_s, TextRules::dateText(record.docDate) },
            { u"文书编号"_s, record.docNo } });
}

QString annualDecision(const CompanyProfile& profile, const DocumentRecord& record)
{
    const QString year = QString::number(record.docYear);
    QString html = decisionHead(
        profile, record, record.title, profile.companyName + u' ' + year + u" 年度"_s);
    html += heading(u"一、总则"_s)
        + paragraph(escaped(profile.companyName)
            + u" 为一人有限责任公司，不设股东会。根据《中华人民共和国公司法》及公司章程的有关规定，"
              "股东就公司 "_s
            + year + u" 年度经营管理的重大事项，作出如下书面决定："_s);
    html += heading(u"二、决定事项"_s) + numberedItems(DocumentRules::selectedTexts(record));
    html += heading(u"三、生效与置备"_s)
        + paragraph(u"本决定自作出之日起生效。以上决定由股东作出，签名后置备于公司。"_s);
    return page(html);
}

QString entryRow(int number, const Transaction& entry)
{
    const QString centre = u"center"_s;
    return u"<tr>"_s + cell(centre, QString::number(number))
        + cell(centre, TextRules::dateText(entry.transDate)) + cell(centre, escaped(entry.summary))
        + cell(centre, labelOf(entry.ownerAccountType))
        + cell(centre, escaped(entry.counterpartyName))
        + cell(u"right"_s, Money::format(entry.amountFen)) + cell(centre, labelOf(entry.category))
        + u"</tr>"_s;
}

QString entryTable(const QList<Transaction>& entries, qint64 totalFen)
{
    QString html = u"<table width=\"100%\" cellspacing=\"0\" cellpadding=\"5\" border=\"1\" "
                   "style=\"border-collapse:collapse;\"><tr>"_s;
    for (const QString& name : { u"序号"_s, u"日期"_s, u"摘要"_s, u"本方账户"_s, u"对方名称"_s,
             u"金额（元）"_s, u"资金分类"_s })
        html += cell(u"center"_s, u"<b>"_s + name + u"</b>"_s);
    html += u"</tr>"_s;
    int number = 0;
    for (const Transaction& entry : entries)
        html += entryRow(++number, entry);
    return html + u"<tr><td colspan=\"5\" style=\""_s + cellStyle + u"\"><b>合计（大写）：人民币 "_s
        + Money::toChineseUpper(totalFen) + u"</b></td>"_s
        + cell(u"right"_s, Money::format(totalFen)) + cell(u"center"_s, QString())
        + u"</tr></table>"_s;
}

QString fundSentence(const DocumentRecord& record, qsizetype count, qint64 totalFen)
{
    const Direction direction = record.fundDirection.value_or(Direction::In);
    QString html = u"经股东决定："_s + DocumentTexts::directionLabel(direction)
        + u"，资金性质为<b>"_s + escaped(record.fundNature) + u"</b>"_s;
    if (record.settleDate.isValid())
        html += u"，并约定于 "_s + TextRules::dateText(record.settleDate) + u" 前结清/偿还"_s;
    return html + u"。本次往来共 "_s + QString::number(count) + u" 笔，金额合计人民币 "_s
        + Money::format(totalFen) + u" 元（大写："_s + Money::toChineseUpper(totalFen) + u"）。"_s;
}

QString fundDecision(
    const CompanyProfile& profile, const DocumentRecord& record, const QList<Transaction>& entries)
{
    const qint64 total = DocumentRules::totalFen(entries).value_or(0);
    QString html = decisionHead(
        profile, record, DocumentTexts::kindName(record.docType), profile.companyName);
    html += heading(u"一、往来性质与金额"_s)
        + paragraph(fundSentence(record, entries.size(), total));
    html += heading(u"二、资金往来明细"_s) + entryTable(entries, total);
    html += heading(u"三、独立性声明条款"_s)
        + paragraph(u"上述资金往来均系公司与股东之间的独立资金安排，性质明确、用途清晰，"
                    "已如实、完整记入公司账簿及银行流水。"
                    "公司财产与股东个人财产相互独立、分别核算，不存在财产混同情形；"
                    "股东不对公司债务承担连带责任。"_s);
    if (!TextRules::isBlank(record.extraText))
        html += paragraph(u"补充说明："_s + escapedLines(record.extraText));
    html += paragraph(u"以上决定由股东作出，签名后置备于公司。"_s);
    return page(html);
}

QString independenceStatement(const CompanyProfile& profile, const DocumentRecord& record)
{
    QStringList measures = DocumentRules::selectedTexts(record);
    if (!TextRules::isBlank(record.extraText))
        measures += DocumentTexts::furtherMeasures(record.extraText);
    QString html = head(DocumentTexts::kindName(record.docType), profile.companyName,
        { { u"声明人（股东）"_s, profile.shareholderName },
            { u"统一社会信用代码"_s, profile.creditCode },
            { u"声明基准日"_s, TextRules::dateText(record.docDate) },
            { u"文书编号"_s, record.docNo } });
    html += heading(u"一、声明"_s)
        + paragraph(u"声明人作为 "_s + escaped(profile.companyName)
            + u"（以下简称\"公司\"）的唯一股东，郑重声明："
              "公司财产与声明人个人财产相互独立，产权边界清晰、分别建账核算，不存在任何财产混同情形。"
              "公司以其全部财产对其债务承担责任，"
              "声明人以其认缴的出资额为限对公司承担责任。"_s);
    html += heading(u"二、已采取的独立性措施"_s) + numberedItems(measures);
    html += heading(u"三、承诺条款"_s)
        + paragraph(u"本声明所述内容真实、准确、完整。如有不实，股东愿依法承担相应责任。"_s);
    return page(html);
}

} // namespace

QString compose(
    const CompanyProfile& profile, const DocumentRecord& record, const QList<Transaction>& entries)
{
    switch (record.docType) {
    case DocType::FundDecision:
        return fundDecision(profile, record, entries);
    case DocType::IndependenceStatement:
        return independenceStatement(profile, record);
    case DocType::AnnualDecision:
        break;
    }
    return annualDecision(profile, record);
}

QString escaped(const QString& text)
{
    // Rows of older programs may hold direction marks; paper shows the letters as they are stored.
    return TextRules::withoutDirectionMarks(text).toHtmlEscaped().replace(u'%', u"&#37;"_s);
}

QString escapedLines(const QString& text)
{
    return escaped(text)
        .replace(u"\r\n"_s, u"\n"_s)
        .replace(u'\r', u'\n')
        .replace(u'\n', u"<br/>"_s);
}

} // namespace DocumentTemplates
