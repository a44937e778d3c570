#include "dialogs/ProfileWizardDialog.h"

#include "core/AppPaths.h"
#include "db/ProfileDao.h"
#include "dialogs/ProfileForm.h"
#include "dialogs/RiskNotice.h"
#include "dialogs/ThresholdForm.h"
#include "services/ProfileRules.h"
#include "services/risk/RiskService.h"
#include "widgets/FormRows.h"
#include "widgets/MessageBox.h"
#include "widgets/TextRole.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

enum Step { Welcome, Company, Account };

constexpr auto stepNames
    = std::to_array<QStringView>({ u"欢迎使用 Brixa", u"公司与股东", u"对公账户与风险提醒标准" });
constexpr int lastStep = static_cast<int>(stepNames.size()) - 1;

Step stepOf(ProfileRules::Field field)
{
    using ProfileRules::Field;
    return field == Field::BankName || field == Field::BankAccount ? Account : Company;
}

QLabel* paragraph(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QWidget* stepWith(FormRows* rows, const QString& introduction, QWidget* parent)
{
    auto* step = new QWidget(parent);
    auto* layout = new QVBoxLayout(step);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(16);
    layout->addWidget(paragraph(introduction, step));
    layout->addLayout(rows);
    layout->addStretch();
    return step;
}

} // namespace

ProfileWizardDialog::ProfileWizardDialog(const CompanyProfile& profile, QWidget* parent)
    : FormDialog(u"初始设置"_s, parent)
    , m_profile(profile)
    , m_form(new ProfileForm(this))
    , m_thresholds(new ThresholdForm(this))
{
    setObjectName(u"ProfileWizardDialog"_s);
    m_progress = new QLabel(this);
    m_progress->setTextFormat(Qt::PlainText);
    setTextRole(m_progress, TextRole::PageTitle);
    body()->addWidget(m_progress);
    m_steps = new QStackedWidget(this);
    m_steps->addWidget(buildWelcome());
    m_steps->addWidget(buildCompany());
    m_steps->addWidget(buildAccount());
    body()->addWidget(m_steps, 1);

    m_form->show(m_profile);
    m_thresholds->show(m_profile);
    m_profile = edited();

    m_back = addSideButton(u"上一步"_s);
    addRejectButton(u"退出"_s);
    m_next = addPrimaryButton(u"下一步"_s);
    connect(m_back, &QPushButton::clicked, this, [this] { goTo(m_steps->currentIndex() - 1); });
    connect(m_next, &QPushButton::clicked, this, &ProfileWizardDialog::onNext);
    goTo(Welcome);
    resize(600, 480);
}

QWidget* ProfileWizardDialog::buildWelcome()
{
    auto* step = new QWidget(this);
    auto* layout = new QVBoxLayout(step);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    const QStringList paragraphs {
        u"一人有限责任公司的股东，如果不能证明公司财产独立于自己的财产，要对公司债务承担连带责任。Brixa 帮您把证据一笔一笔留下来："_s,
        u"•  登记公司账户与股东私人账户之间的每一笔资金往来，自动提示公私混同的风险；"_s,
        u"•  归档银行回单、合同、发票等凭证，并记录文件指纹，日后可以核对是否被改动；"_s,
        u"•  起草年度股东决定书、公私资金往来决定书和财产独立声明书，编号存档并生成 PDF。"_s,
        u"所有数据都保存在这台电脑的下面这个文件夹里，软件不联网，不会发送任何内容："_s,
    };
    for (const QString& text : paragraphs)
        layout->addWidget(paragraph(text, step));
    QLabel* folder = paragraph(QDir::toNativeSeparators(AppPaths::dataDir()), step);
    folder->setObjectName(u"dataFolder"_s);
    folder->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    layout->addWidget(folder);
    layout->addWidget(
        paragraph(u"接下来用两步填写公司的基本信息，以后可以在“系统设置”中修改。"_s, step));
    layout->addStretch();
    return step;
}

QWidget* ProfileWizardDialog::buildCompany()
{
    auto* rows = new FormRows;
    using ProfileRules::Field;
    for (const Field field : { Field::CompanyName, Field::CreditCode, Field::ShareholderName,
             Field::Address, Field::Phone })
        m_form->addRow(rows, field);
    return stepWith(
        rows, u"以下信息会写入软件起草的文书，请与营业执照保持一致。标 * 的为必填项。"_s, this);
}

QWidget* ProfileWizardDialog::buildAccount()
{
    auto* rows = new FormRows;
    m_form->addRow(rows, ProfileRules::Field::BankName);
    m_form->addRow(rows, ProfileRules::Field::BankAccount);
    m_thresholds->addRows(rows);
    return stepWith(
        rows, u"对公账户可以稍后补填。风险提醒标准已给出常用值，一般不需要修改。"_s, this);
}

void ProfileWizardDialog::goTo(int step)
{
    m_steps->setCurrentIndex(step);
    m_progress->setText(
        u"%1　%2 / %3"_s.arg(stepNames.at(static_cast<std::size_t>(step)).toString(),
            QString::number(step + 1), QString::number(lastStep + 1)));
    m_back->setVisible(step != Welcome);
    m_next->setText(step == lastStep ? u"完成"_s : u"下一步"_s);
    if (step == Welcome)
        m_next->setFocus();
    else
        m_form->focus(
            step == Company ? ProfileRules::Field::CompanyName : ProfileRules::Field::BankName);
}

void ProfileWizardDialog::onNext()
{
    const int step = m_steps->currentIndex();
    if (step == Company && showProblem(step))
        return;
    if (step < lastStep)
        goTo(step + 1);
    else
        save();
}

bool ProfileWizardDialog::showProblem(int upTo)
{
    const auto problem = ProfileRules::firstProblem(edited());
    if (!problem || stepOf(problem->field) > upTo)
        return false;
    if (stepOf(problem->field) != m_steps->currentIndex())
        goTo(stepOf(problem->field));
    MessageBox::warn(this, problem->title, problem->text);
    m_form->focus(problem->field);
    return true;
}

void ProfileWizardDialog::save()
{
    if (showProblem(lastStep) || m_thresholds->showProblem())
        return;
    if (const auto problem = RiskService::storeProfile(edited())) {
        MessageBox::warn(this, u"保存失败"_s, u"公司档案无法保存：%1"_s.arg(*problem));
        return;
    }
    // An older ledger may lack nothing but the names, and the thresholds may have changed.
    RiskService().reevaluateAll();
    RiskNotice::warnIfBehind(this);
    accept();
}

CompanyProfile ProfileWizardDialog::edited() const
{
    return m_thresholds->edited(m_form->edited(m_profile));
}

bool ProfileWizardDialog::hasUnsavedInput() const
{
    return edited() != m_profile;
}
