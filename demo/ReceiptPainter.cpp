#include "ReceiptPainter.h"

#include "core/Money.h"
#include "core/TextRules.h"

#include <QPainter>
#include <QPainterPath>

#include <utility>

using namespace Qt::StringLiterals;

namespace ReceiptPainter {

namespace {

// The colours of paper and print: what is drawn here are other people's papers, not the program.
const QColor paper(0xfd, 0xfd, 0xfb);
const QColor ink(0x22, 0x26, 0x2b);
const QColor faint(0x8a, 0x90, 0x99);
const QColor bankBlue(0x1f, 0x4e, 0x8c);
const QColor invoiceBrown(0x8c, 0x3b, 0x1f);
const QColor sealRed(0xc8, 0x1e, 0x1e);

using Line = std::pair<QString, QString>;

void setFont(QPainter& painter, int pixels, bool bold = false)
{
    QFont font = painter.font();
    font.setPixelSize(pixels);
    font.setBold(bold);
    painter.setFont(font);
}

void drawSheet(QPainter& painter, QSize size)
{
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.fillRect(QRect({}, size), paper);
}

void drawText(QPainter& painter, QRectF box, const QString& text, QColor colour,
    Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter)
{
    painter.setPen(colour);
    painter.drawText(box, static_cast<int>(alignment) | Qt::TextWordWrap, text);
}

// The round seal of whoever issued the paper, a star in its middle.
void drawSeal(QPainter& painter, QPointF centre, const QString& caption)
{
    painter.save();
    painter.setOpacity(0.75);
    painter.setPen(QPen(sealRed, 3));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(centre, 62, 62);
    setFont(painter, 34);
    drawText(
        painter, { centre.x() - 30, centre.y() - 34, 60, 50 }, u"★"_s, sealRed, Qt::AlignCenter);
    setFont(painter, 14, true);
    drawText(
        painter, { centre.x() - 55, centre.y() + 18, 110, 24 }, caption, sealRed, Qt::AlignCenter);
    painter.restore();
}

void drawGrid(QPainter& painter, QRectF box, const QList<Line>& lines, QColor colour)
{
    const qreal height = box.height() / static_cast<qreal>(lines.size());
    const qreal captionWidth = box.width() * 0.3;
    setFont(painter, 17);
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QRectF row(
            box.left(), box.top() + static_cast<qreal>(i) * height, box.width(), height);
        painter.setPen(QPen(colour, 1));
        painter.drawRect(row);
        painter.drawLine(QPointF(row.left() + captionWidth, row.top()),
            QPointF(row.left() + captionWidth, row.bottom()));
        drawText(painter, { row.left() + 12, row.top(), captionWidth - 16, height },
            lines.at(i).first, colour);
        drawText(painter,
            { row.left() + captionWidth + 12, row.top(), row.width() - captionWidth - 20, height },
            lines.at(i).second, ink);
    }
}

QString serialOf(const Transaction& entry, QStringView prefix)
{
    return u"%1%2%3"_s.arg(prefix.toString(), entry.transDate.toString(u"yyyyMMdd"),
        QString::number(entry.id).rightJustified(6, u'0'));
}

struct Message {
    bool own;
    QString text;
};

void drawMessage(QPainter& painter, const Message& message, qreal top)
{
    const QRectF bubble(message.own ? 110 : 80, top, 350, 92);
    const QPointF face(message.own ? 500 : 40, top + 28);
    painter.setPen(Qt::NoPen);
    painter.setBrush(message.own ? QColor(0x5b, 0x8d, 0xef) : QColor(0xb0, 0x8a, 0x5a));
    painter.drawRoundedRect(QRectF(face.x() - 26, face.y() - 26, 52, 52), 8, 8);
    painter.setBrush(message.own ? QColor(0x95, 0xec, 0x69) : QColor(Qt::white));
    painter.drawRoundedRect(bubble, 10, 10);
    setFont(painter, 18);
    drawText(painter, bubble.adjusted(16, 6, -16, -6), message.text, ink);
}

} // namespace

void drawBankReceipt(QPainter& painter, const CompanyProfile& company, const Transaction& entry)
{
    drawSheet(painter, bankReceiptSize);
    const QString own = company.companyName;
    const bool incoming = entry.direction == Direction::In;
    setFont(painter, 28, true);
    drawText(painter, { 40, 24, 920, 44 }, u"示范商业银行　电子回单"_s, bankBlue, Qt::AlignCenter);
    setFont(painter, 16);
    drawText(painter, { 40, 78, 500, 26 }, u"回单编号：%1"_s.arg(serialOf(entry, u"HD")), faint);
    drawText(painter, { 500, 78, 460, 26 },
        u"交易日期：%1"_s.arg(TextRules::dateText(entry.transDate)), faint,
        Qt::AlignRight | Qt::AlignVCenter);
    drawGrid(painter, { 40, 116, 920, 336 },
        { { u"付款人"_s, incoming ? entry.counterpartyName : own },
            { u"收款人"_s, incoming ? own : entry.counterpartyName },
            { u"本方账号"_s, company.bankAccount }, { u"开户银行"_s, company.bankName },
            { u"金额（小写）"_s, u"¥ %1"_s.arg(Money::format(entry.amountFen)) },
            { u"金额（大写）"_s, u"人民币%1"_s.arg(Money::toChineseUpper(entry.amountFen)) },
            { u"摘要"_s, entry.summary } },
        bankBlue);
    setFont(painter, 14);
    drawText(painter, { 40, 470, 640, 60 },
        u"本回单为演示资料，银行与账号均为虚构。\n重复打印请注意核对回单编号。"_s, faint);
    drawSeal(painter, { 860, 474 }, u"业务专用章"_s);
}

void drawInvoice(QPainter& painter, const CompanyProfile& company, const Transaction& entry)
{
    drawSheet(painter, invoiceSize);
    const bool sold = entry.direction == Direction::In;
    const QString own = company.companyName;
    setFont(painter, 28, true);
    drawText(
        painter, { 40, 22, 920, 44 }, u"电子发票（普通发票）"_s, invoiceBrown, Qt::AlignCenter);
    painter.setPen(QPen(invoiceBrown, 2));
    painter.drawLine(330, 70, 670, 70);
    setFont(painter, 15);
    drawText(painter, { 640, 78, 320, 24 }, u"发票号码：%1"_s.arg(serialOf(entry, u"25332")), ink,
        Qt::AlignRight | Qt::AlignVCenter);
    drawText(painter, { 40, 78, 400, 24 },
        u"开票日期：%1"_s.arg(entry.transDate.toString(u"yyyy年MM月dd日")), ink);
    // Small taxpayers' rate, included in what was paid.
    const qint64 taxFen = entry.amountFen / 101;
    drawGrid(painter, { 40, 112, 920, 400 },
        { { u"购买方名称"_s, sold ? entry.counterpartyName : own },
            { u"销售方名称"_s, sold ? own : entry.counterpartyName },
            { u"项目名称"_s, (sold ? u"*设计服务*"_s : u"*现代服务*"_s) + entry.summary },
            { u"金额"_s, Money::format(entry.amountFen - taxFen) },
            { u"税率 / 税额"_s, u"1%　　%1"_s.arg(Money::format(taxFen)) },
            { u"价税合计（小写）"_s, u"¥ %1"_s.arg(Money::format(entry.amountFen)) },
            { u"价税合计（大写）"_s, Money::toChineseUpper(entry.amountFen) },
            { u"备注"_s, u"演示资料，非真实发票"_s } },
        invoiceBrown);
    setFont(painter, 15);
    drawText(painter, { 40, 536, 300, 26 }, u"开票人：何苗"_s, ink);
    drawSeal(painter, { 860, 560 }, u"发票专用章"_s);
}

void drawContract(QPainter& painter, const CompanyProfile& company, const Contract& contract)
{
    drawSheet(painter, pageSize);
    setFont(painter, 30, true);
    drawText(painter, { 60, 80, 674, 50 }, contract.name, ink, Qt::AlignCenter);
    setFont(painter, 16);
    drawText(painter, { 60, 140, 674, 26 }, u"合同编号：%1"_s.arg(contract.code), faint,
        Qt::AlignCenter);
    const QStringList clauses {
        u"甲方（受托方）：%1"_s.arg(company.companyName),
        u"乙方（委托方）：%1"_s.arg(contract.partyB),
        u"第一条　服务内容：甲方按照双方确认的设计任务书提供设计服务，并按阶段提交成果。"_s,
        u"第二条　合同金额：人民币 %1 元（大写：%2）。"_s.arg(
            Money::format(contract.amountFen), Money::toChineseUpper(contract.amountFen)),
        u"第三条　付款方式：乙方应将全部款项付至甲方下列对公账户，不得付至任何个人账户。"_s,
        u"　　　　户名：%1　开户行：%2　账号：%3"_s.arg(
            company.companyName, company.bankName, company.bankAccount),
        u"第四条　成果交付：甲方提交阶段成果后，乙方应在五个工作日内书面确认或提出修改意见。"_s,
        u"第五条　知识产权：乙方付清全部款项后，最终成果的著作财产权归乙方所有。"_s,
        u"第六条　违约责任：任何一方违约的，应赔偿对方因此受到的损失。"_s,
        u"第七条　争议解决：协商不成的，向甲方所在地人民法院提起诉讼。"_s,
    };
    setFont(painter, 17);
    qreal top = 200;
    for (const QString& clause : clauses) {
        drawText(painter, { 70, top, 654, 64 }, clause, ink);
        top += 68;
    }
    drawText(painter, { 70, 920, 320, 30 }, u"甲方（盖章）："_s, ink);
    drawText(painter, { 430, 920, 320, 30 }, u"乙方（盖章）："_s, ink);
    drawText(painter, { 70, 1040, 654, 30 },
        u"签订日期：%1"_s.arg(contract.signDate.toString(u"yyyy年MM月dd日")), ink);
    drawSeal(painter, { 240, 960 }, u"合同专用章"_s);
    drawSeal(painter, { 600, 960 }, u"合同专用章"_s);
}

void drawDelivery(QPainter& painter, const CompanyProfile& company, const Project& project)
{
    drawSheet(painter, pageSize);
    setFont(painter, 30, true);
    drawText(painter, { 60, 90, 674, 50 }, u"设计成果交付验收单"_s, ink, Qt::AlignCenter);
    drawGrid(painter, { 70, 190, 654, 420 },
        { { u"项目编号"_s, project.code }, { u"项目名称"_s, project.name },
            { u"委托方"_s, project.clientName }, { u"受托方"_s, company.companyName },
            { u"交付日期"_s, TextRules::dateText(project.endDate) },
            { u"交付内容"_s, project.note }, { u"验收结论"_s, u"符合合同约定，同意验收。"_s } },
        ink);
    setFont(painter, 17);
    drawText(painter, { 70, 700, 320, 30 }, u"验收人（签字）："_s, ink);
    drawSeal(painter, { 560, 740 }, u"验收专用章"_s);
}

void drawChat(QPainter& painter, const Transaction& entry)
{
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.fillRect(QRect({}, chatSize), QColor(0xed, 0xed, 0xed));
    painter.fillRect(0, 0, chatSize.width(), 76, QColor(0xf7, 0xf7, 0xf7));
    setFont(painter, 22, true);
    drawText(painter, { 0, 0, 540, 76 }, entry.counterpartyName, ink, Qt::AlignCenter);
    setFont(painter, 15);
    drawText(painter, { 0, 92, 540, 24 }, entry.transDate.toString(u"yyyy年M月d日") + u" 10:24"_s,
        faint, Qt::AlignCenter);

    const QString amount = Money::format(entry.amountFen);
    const QList<Message> messages {
        { false, u"林老师，设计费我先用微信转您了，您查收一下。"_s },
        { false, u"转账 ¥%1"_s.arg(amount) },
        { true, u"收到。不过合同约定要付到公司账户，公司账户发您，下次请转对公。"_s },
        { false, u"不好意思，财务不在，我下次注意。"_s },
        { true, u"没关系，这笔 %1 元我明天就转入公司账户，给您补开发票。"_s.arg(amount) },
    };
    qreal top = 140;
    for (const Message& message : messages) {
        drawMessage(painter, message, top);
        top += 118;
    }
}

} // namespace ReceiptPainter
