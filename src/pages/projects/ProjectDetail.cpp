#include "pages/projects/ProjectDetail.h"

#include "core/TextRules.h"
#include "pages/projects/ContractsCard.h"
#include "pages/projects/ProjectEntriesCard.h"
#include "pages/projects/ProjectVouchersCard.h"
#include "services/projects/ProjectTexts.h"
#include "theme/Theme.h"
#include "widgets/Banner.h"
#include "widgets/ButtonRole.h"
#include "widgets/Card.h"
#include "widgets/TextRole.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QString infoRow(const QString& label, const QString& value)
{
    QString shown = TextRules::isBlank(value) ? u"未填写"_s : value.toHtmlEscaped();
    shown.replace(u'\n', u"<br/>"_s);
    return u"<tr><td style='padding:4px 16px 4px 0; color:%1;'>%2</td>"
           "<td style='padding:4px 0;'>%3</td></tr>"_s.arg(
               Theme::instance().hex(Token::TextSecondary), label, shown);
}

QLabel* plainLabel(TextRole role, const QString& objectName, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    setTextRole(label, role);
    return label;
}

} // namespace

ProjectDetail::ProjectDetail(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(u"ProjectDetail"_s);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 20, 16, 24);
    column->setSpacing(16);
    column->addLayout(buildHeader());
    m_unreadable = new Banner(BannerKind::Danger, this);
    m_unreadable->hide();
    column->addWidget(m_unreadable);

    m_infoCard = new Card(u"基本信息"_s, this);
    m_info = new QLabel(m_infoCard);
    m_info->setObjectName(u"projectInfo"_s);
    m_info->setTextFormat(Qt::RichText);
    m_info->setWordWrap(true);
    m_info->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_infoCard->body()->addWidget(m_info);
    m_contracts = new ContractsCard(this);
    m_entries = new ProjectEntriesCard(this);
    m_vouchers = new ProjectVouchersCard(this);
    for (QWidget* part : { static_cast<QWidget*>(m_infoCard), static_cast<QWidget*>(m_contracts),
             static_cast<QWidget*>(m_entries), static_cast<QWidget*>(m_vouchers) })
        column->addWidget(part);
    column->addStretch();

    connect(&Theme::instance(), &Theme::changed, this, &ProjectDetail::showInfo);
    connect(m_contracts, &ContractsCard::changed, this, &ProjectDetail::changed);
    connect(m_entries, &ProjectEntriesCard::changed, this, &ProjectDetail::changed);
    connect(m_entries, &ProjectEntriesCard::viewInLedgerRequested, this,
        &ProjectDetail::viewInLedgerRequested);
    connect(m_vouchers, &ProjectVouchersCard::changed, this, &ProjectDetail::changed);
    connect(
        m_vouchers, &ProjectVouchersCard::projectRequested, this, &ProjectDetail::projectRequested);
    connect(m_vouchers, &ProjectVouchersCard::entryRequested, this, &ProjectDetail::entryRequested);
}

QLayout* ProjectDetail::buildHeader()
{
    auto* texts = new QVBoxLayout;
    texts->setSpacing(4);
    m_name = plainLabel(TextRole::PageTitle, u"projectName"_s, this);
    m_headline = plainLabel(TextRole::Hint, u"projectHeadline"_s, this);
    texts->addWidget(m_name);
    texts->addWidget(m_headline);

    auto* header = new QHBoxLayout;
    header->setSpacing(8);
    header->addLayout(texts, 1);
    QPushButton* edit = makeButton(u"编辑"_s, ButtonRole::Default, this);
    edit->setObjectName(u"editProject"_s);
    edit->setAccessibleDescription(u"编辑项目"_s);
    connect(edit, &QPushButton::clicked, this, &ProjectDetail::editRequested);
    QPushButton* remove = makeButton(u"删除"_s, ButtonRole::Danger, this);
    remove->setObjectName(u"deleteProject"_s);
    remove->setAccessibleDescription(u"删除项目"_s);
    connect(remove, &QPushButton::clicked, this, &ProjectDetail::deleteRequested);
    header->addWidget(edit, 0, Qt::AlignTop);
    header->addWidget(remove, 0, Qt::AlignTop);
    return header;
}

void ProjectDetail::showProject(const Project& project)
{
    m_project = project;
    m_name->setText(project.name);
    m_headline->setText(ProjectTexts::headline(project));
    showInfo();
    QStringList problems { m_contracts->showProject(project.id), m_entries->showProject(project.id),
        m_vouchers->showProject(project.id) };
    problems.removeAll(QString());
    m_unreadable->setText(problems.join(u'\n'));
    m_unreadable->setVisible(!problems.isEmpty());
}

void ProjectDetail::showInfo()
{
    m_info->setText(u"<table style='font-size:13px; line-height:170%;'>%1%2%3%4%5%6</table>"_s.arg(
        infoRow(u"项目编号"_s, m_project.code), infoRow(u"客户名称"_s, m_project.clientName),
        infoRow(u"项目状态"_s, labelOf(m_project.status)),
        infoRow(u"起止日期"_s, ProjectTexts::period(m_project)),
        infoRow(u"负责人"_s, m_project.manager), infoRow(u"备注"_s, m_project.note)));
}
