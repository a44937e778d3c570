#include "dialogs/DisclaimerDialog.h"

#include <QCheckBox>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBrowser>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

struct Clause {
    QStringView heading;
    QStringView text;
};

constexpr auto clauses = std::to_array<Clause>({
    { u"一、软件的用途",
        u"Brixa 是供一人有限责任公司股东使用的记录工具，用于登记公司账户与股东私人账户之间的资金往来，"
        u"归档合同、回单、发票等凭证，并按固定模板起草股东决定书等文书，"
        u"帮助您保存公司财产独立于股东个人财产的证据。" },
    { u"二、不构成专业意见",
        u"软件中的风险提示、统计结果和文书模板均不构成法律意见、税务意见或审计意见，"
        u"也不能代替律师、税务师、注册会计师的服务。"
        u"涉及诉讼、分红、借款、纳税等事项，请咨询专业人士。" },
    { u"三、风险规则是固定的",
        u"风险等级由内置的固定规则自动判断，只看登记的内容，不了解交易背后的全部事实。"
        u"显示“正常”不代表没有法律风险，显示“高风险”也不代表已经违法。" },
    { u"四、证据由法院审查",
        u"依照《中华人民共和国公司法》，只有一个股东的公司，"
        u"股东不能证明公司财产独立于股东自己的财产的，应当对公司债务承担连带责任。"
        u"法院会综合审查全部证据；使用本软件并不保证任何诉讼结果。" },
    { u"五、内容由您负责",
        u"登记的流水、上传的凭证和生成的文书应当真实、完整、及时。"
        u"对录入内容的真实性、合法性以及由此产生的后果，由您本人负责。"
        u"请勿用本软件补造、变造任何凭证或文书。" },
    { u"六、数据只保存在本机",
        u"全部数据保存在本软件所在文件夹的 data 目录中，软件不联网，不向任何人发送数据。"
        u"启动密码只阻止他人打开软件，不会加密数据文件；"
        u"能够接触这台电脑的人仍可能复制这些文件。" },
    { u"七、请定期备份",
        u"电脑故障、误删文件或存储设备损坏都可能使数据丢失，软件无法替您找回。"
        u"请定期备份全部数据（退出软件后复制整个 data 目录也是一种办法），"
        u"并把备份保存到另一处存储设备。" },
    { u"八、年度审计",
        u"《公司法》要求公司在每一会计年度终了时编制财务会计报告，并依法经会计师事务所审计。"
        u"年度审计报告是证明财产独立的重要证据，本软件的记录不能代替审计。" },
    { u"九、责任限制",
        u"软件按现状提供。在法律允许的范围内，"
        u"开发者不对因使用或无法使用本软件造成的损失承担责任。" },
});

QString disclaimerHtml()
{
    QString html = u"<p>请完整阅读以下内容。继续使用即表示您已理解并同意。</p>"_s;
    for (const Clause& clause : clauses)
        html += u"<h4>%1</h4><p style=\"line-height:150%\">%2</p>"_s.arg(
            clause.heading.toString(), clause.text.toString());
    return html + u"<p>免责声明 V1.0</p>"_s;
}

} // namespace

DisclaimerDialog::DisclaimerDialog(Purpose purpose, QWidget* parent)
    : FormDialog(u"免责声明"_s, parent)
{
    setObjectName(u"DisclaimerDialog"_s);
    m_text = new QTextBrowser(this);
    m_text->setObjectName(u"DisclaimerText"_s);
    m_text->setAccessibleName(u"免责声明全文"_s);
    m_text->setTabChangesFocus(true);
    m_text->setHtml(disclaimerHtml());
    body()->addWidget(m_text, 1);
    resize(720, 560);

    if (purpose == Purpose::Confirm) {
        buildConfirmation();
        return;
    }
    QPushButton* close = addPrimaryButton(u"关闭"_s);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
}

void DisclaimerDialog::buildConfirmation()
{
    m_agreed = new QCheckBox(u"我已阅读并同意以上全部内容"_s, this);
    m_agreed->setEnabled(false);
    m_agreed->setToolTip(u"请先将全文阅读到末尾"_s);
    body()->addWidget(m_agreed);
    addRejectButton(u"不同意并退出"_s);
    m_accept = addPrimaryButton(u"同意并继续"_s);
    m_accept->setEnabled(false);

    connect(m_agreed, &QCheckBox::toggled, m_accept, &QPushButton::setEnabled);
    connect(m_accept, &QPushButton::clicked, this, &QDialog::accept);
    const QScrollBar* bar = m_text->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this, &DisclaimerDialog::noticeReadToEnd);
    // On a tall window nothing scrolls: the whole text is before the reader from the start.
    connect(bar, &QScrollBar::rangeChanged, this, &DisclaimerDialog::noticeReadToEnd);
    m_text->setFocus();
}

void DisclaimerDialog::noticeReadToEnd()
{
    const QScrollBar* bar = m_text->verticalScrollBar();
    if (!isVisible() || bar->value() < bar->maximum())
        return;
    m_agreed->setEnabled(true);
    m_agreed->setToolTip({});
}
