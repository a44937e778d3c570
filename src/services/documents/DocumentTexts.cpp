#include "services/documents/DocumentTexts.h"

#include "core/Money.h"

using namespace Qt::StringLiterals;

namespace DocumentTexts {

namespace {

// 1 to 99 in Chinese numerals; the tens of 10 to 19 go without their 一.
QString numeral(int number)
{
    static const QString digits = u"一二三四五六七八九"_s;
    const int tens = number / 10;
    const int ones = number % 10;
    QString text;
    if (tens > 1)
        text += digits.at(tens - 1);
    if (tens > 0)
        text += u'十';
    if (ones > 0)
        text += digits.at(ones - 1);
    return text;
}

} // namespace

QStringList annualReportItems(int year)
{
    const QString yearText = QString::number(year);
    return { u"审议通过公司 %1 年度经营情况报告。"_s.arg(yearText),
        u"审议通过公司 %1 年度财务情况报告。"_s.arg(yearText) };
}

QString profitDistributed(qint64 fen, const QString& method)
{
    return u"本年度利润分配方案：向股东分配利润人民币 %1 元（大写：%2），分配方式：%3。"_s.arg(
        Money::format(fen), Money::toChineseUpper(fen), method);
}

QString profitKept()
{
    return u"本年度利润不分配。"_s;
}

QString otherItem(const QString& text)
{
    return u"其他事项："_s + text;
}

QStringList independenceMeasures()
{
    return { u"公司开设独立银行账户，经营款项通过对公账户结算"_s,
        u"股东个人财产与公司财产分别建账、分别登记"_s,
        u"股东与公司之间资金往来均出具书面股东决定并留存凭证"_s,
        u"依法建立财务会计制度，独立核算"_s, u"公司资产独立保管、独立使用"_s };
}

QString furtherMeasures(const QString& text)
{
    return u"其他独立性措施："_s + text;
}

QString directionLabel(Direction direction)
{
    return direction == Direction::Out ? u"公司资金转付股东"_s : u"股东资金转入公司"_s;
}

QStringList fundNatures(Direction direction)
{
    if (direction == Direction::Out)
        return { u"归还股东借款"_s, u"股东向公司借款"_s, u"备用金"_s, u"利润分配"_s,
            u"归还股东代垫款"_s, u"费用报销"_s };
    return { u"股东借款"_s, u"投入流动资金"_s, u"实缴出资"_s, u"归还公司借款"_s, u"归还备用金"_s,
        u"代收款项转回公司"_s };
}

QStringList profitMethods()
{
    return { u"银行转账至股东个人账户"_s, u"抵减股东对公司的借款"_s, u"暂不支付，计入应付股利"_s };
}

QString kindName(DocType type)
{
    for (const auto& row : codeTable<DocType>) {
        if (row.value == type)
            return row.label.toString();
    }
    return u"法定文书"_s;
}

QString itemNumber(int number)
{
    const bool inWords = number >= 1 && number <= 99;
    return u"（%1）"_s.arg(inWords ? numeral(number) : QString::number(number));
}

} // namespace DocumentTexts
