#include "pages/settings/SelfCheckCard.h"

#include "core/AppPaths.h"
#include "core/TextRules.h"
#include "selfcheck/SelfCheck.h"
#include "services/DesktopFiles.h"
#include "services/FileRules.h"
#include "services/FolderSize.h"
#include "theme/ThemeTokens.h"
#include "widgets/ButtonRole.h"
#include "widgets/IconLabel.h"
#include "widgets/TextRole.h"
#include "widgets/Toast.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int iconSize = 16;

// One file per day: counted at once even after decades.
constexpr int patienceMs = 100;

} // namespace

SelfCheckCard::SelfCheckCard(QWidget* parent)
    : SettingsCard(u"自检与日志"_s, parent)
    , m_state(makeValue())
    , m_list(new QWidget(this))
    , m_rows(new QGridLayout(m_list))
    , m_details(makeButton(QString(), ButtonRole::Default, this))
    , m_log(makeValue())
{
    setHint(u"核对数据库结构、金额计算、编号、风险规则、文书和凭证文件；"
            "不会改动任何记录和文件。"_s);
    m_state->setObjectName(u"selfCheckState"_s);
    m_list->setObjectName(u"selfCheckList"_s);
    m_rows->setContentsMargins(0, 4, 0, 4);
    m_rows->setHorizontalSpacing(12);
    m_rows->setVerticalSpacing(6);
    m_rows->setColumnStretch(2, 1);
    m_list->hide();
    setTextRole(m_log, TextRole::Hint);
    body()->addWidget(m_state);
    body()->addWidget(m_list);
    body()->addWidget(m_log);

    QHBoxLayout* line = addButtonLine();
    QPushButton* run = makeButton(u"立即自检"_s, ButtonRole::Default, this);
    QPushButton* logs = makeButton(u"打开日志文件夹"_s, ButtonRole::Default, this);
    line->addWidget(run);
    line->addWidget(m_details);
    line->addWidget(logs);
    line->addStretch();
    setTabOrder(run, m_details);
    setTabOrder(m_details, logs);
    connect(run, &QPushButton::clicked, this, &SelfCheckCard::onRun);
    connect(m_details, &QPushButton::clicked, this, &SelfCheckCard::onToggleDetails);
    connect(logs, &QPushButton::clicked, this,
        [this] { DesktopFiles::openFolder(this, AppPaths::logsDir()); });
    connect(&SelfCheck::instance(), &SelfCheck::finished, this, &SelfCheckCard::refresh);
}

void SelfCheckCard::refresh()
{
    showReport(SelfCheck::lastResult());
    showLogSize();
}

void SelfCheckCard::onRun()
{
    const SelfCheckReport report = SelfCheck::instance().run();
    m_list->show();
    refresh();
    if (report.failures() == 0)
        Toast::show(window(), u"自检完成，全部正常"_s);
    else
        Toast::show(window(), u"自检发现 %1 项问题"_s.arg(report.failures()), BannerKind::Danger);
}

void SelfCheckCard::onToggleDetails()
{
    m_list->setVisible(m_list->isHidden());
    refresh();
}

void SelfCheckCard::showReport(const SelfCheckReport& report)
{
    m_details->setVisible(report.hasRun());
    if (!report.hasRun()) {
        m_state->setText(u"本次启动后尚未自检。"_s);
        return;
    }
    const bool ok = report.failures() == 0;
    if (!ok)
        m_list->show();
    m_details->setText(m_list->isHidden() ? u"查看明细"_s : u"收起明细"_s);
    const QString found
        = ok ? u"全部正常"_s : u"发现 %1 项问题，请先备份数据"_s.arg(report.failures());
    m_state->setText(u"上次自检：%1，共 %2 项，%3（用时 %4 毫秒）"_s.arg(
        TextRules::timestampText(report.finishedAt), QString::number(report.suites.size()), found,
        QString::number(report.ms())));
    setTextRole(m_state, ok ? TextRole::Success : TextRole::Danger);
    showDetails(report.suites);
}

void SelfCheckCard::showDetails(const QList<SelfCheckResult>& suites)
{
    while (const std::unique_ptr<QLayoutItem> item { m_rows->takeAt(0) }) {
        item->widget()->hide();
        item->widget()->deleteLater();
    }
    int row = 0;
    for (const SelfCheckResult& suite : suites) {
        const Token colour = suite.ok ? Token::SuccessText : Token::DangerText;
        auto* icon = new IconLabel(suite.ok ? u"success"_s : u"danger"_s, colour, iconSize, m_list);
        QLabel* name = makeText(suite.name);
        name->setWordWrap(false);
        QLabel* message = makeValue();
        setValue(message, suite.name, suite.message);
        setTextRole(message, suite.ok ? TextRole::Hint : TextRole::Danger);
        QLabel* time = makeText(u"%1 毫秒"_s.arg(suite.ms));
        time->setWordWrap(false);
        setTextRole(time, TextRole::Meta);
        m_rows->addWidget(icon, row, 0);
        m_rows->addWidget(name, row, 1);
        m_rows->addWidget(message, row, 2);
        m_rows->addWidget(time, row, 3, Qt::AlignRight | Qt::AlignVCenter);
        ++row;
    }
}

void SelfCheckCard::showLogSize()
{
    FolderSize logs({ AppPaths::logsDir() });
    const bool counted = logs.advance(patienceMs);
    m_log->setText(u"日志按天记录，共 %1 个文件，%2%3"_s.arg(QString::number(logs.files()),
        FileRules::formatFileSize(logs.bytes()), counted ? QString() : u" 以上"_s));
}
