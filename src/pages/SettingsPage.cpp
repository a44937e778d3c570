#include "pages/SettingsPage.h"

#include "core/TextRules.h"
#include "db/ProfileDao.h"
#include "dialogs/DisclaimerDialog.h"
#include "dialogs/ProfileDialog.h"
#include "dialogs/ThresholdForm.h"
#include "services/ProfileRules.h"
#include "services/risk/RiskService.h"
#include "theme/Theme.h"
#include "widgets/Banner.h"
#include "widgets/ButtonRole.h"
#include "widgets/Card.h"
#include "widgets/FormRows.h"
#include "widgets/MessageBox.h"
#include "widgets/TextRole.h"
#include "widgets/Toast.h"

#include <QButtonGroup>
#include <QCoreApplication>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

QLabel* plainLabel(const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

SettingsPage::SettingsPage(QWidget* parent)
    : IPage(u"系统设置"_s, parent)
{
    setObjectName(u"SettingsPage"_s);
    auto* content = new QWidget;
    auto* column = new QVBoxLayout(content);
    column->setContentsMargins(24, 20, 24, 24);
    column->setSpacing(16);
    m_unreadable = new Banner(BannerKind::Danger, content);
    m_unreadable->hide();
    column->addWidget(m_unreadable);
    m_stored = new QWidget(content);
    auto* cards = new QVBoxLayout(m_stored);
    cards->setContentsMargins(0, 0, 0, 0);
    cards->setSpacing(16);
    for (Card* card :
        { buildProfileCard(), buildThresholdCard(), buildAppearanceCard(), buildPasswordCard() })
        cards->addWidget(card);
    column->addWidget(m_stored);
    column->addWidget(buildAboutCard());
    column->addStretch();

    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setWidget(content);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);
}

Card* SettingsPage::buildProfileCard()
{
    auto* card = new Card(u"公司档案"_s, this);
    card->setHint(u"以下信息会写入软件起草的文书，请与营业执照保持一致。"_s);
    QPushButton* edit = makeButton(u"编辑档案"_s, ButtonRole::Default, card);
    edit->setObjectName(u"editProfile"_s);
    card->addHeadWidget(edit);
    connect(edit, &QPushButton::clicked, this, &SettingsPage::onEditProfile);

    auto* rows = new QFormLayout;
    rows->setHorizontalSpacing(24);
    rows->setVerticalSpacing(8);
    rows->setContentsMargins(0, 4, 0, 0);
    for (const ProfileRules::FieldRow& row : ProfileRules::fieldRows) {
        QLabel* name = plainLabel(row.label.toString(), card);
        setTextRole(name, TextRole::Hint);
        QLabel* value = plainLabel({}, card);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        value->setAccessibleName(row.label.toString());
        m_profileValues += value;
        rows->addRow(name, value);
    }
    card->body()->addLayout(rows);
    return card;
}

Card* SettingsPage::buildThresholdCard()
{
    auto* card = new Card(u"风险提醒标准"_s, this);
    card->setHint(u"保存后会按新的标准重新判断全部流水。"_s);
    m_thresholds = new ThresholdForm(card);
    auto* rows = new FormRows;
    m_thresholds->addRows(rows);
    card->body()->addLayout(rows);

    auto* line = new QHBoxLayout;
    line->setSpacing(8);
    QPushButton* save = makeButton(u"保存标准"_s, ButtonRole::Primary, card);
    QPushButton* defaults = makeButton(u"恢复默认"_s, ButtonRole::Default, card);
    line->addWidget(save);
    line->addWidget(defaults);
    line->addStretch();
    card->body()->addLayout(line);
    connect(save, &QPushButton::clicked, this, &SettingsPage::onSaveThresholds);
    connect(
        defaults, &QPushButton::clicked, this, [this] { m_thresholds->show(CompanyProfile()); });
    return card;
}

Card* SettingsPage::buildAppearanceCard()
{
    auto* card = new Card(u"外观"_s, this);
    card->setHint(u"选择后立即生效。"_s);
    m_themes = new QButtonGroup(this);
    auto* line = new QHBoxLayout;
    line->setSpacing(24);
    for (const ThemeMode mode : allValues<ThemeMode>()) {
        auto* choice = new QRadioButton(labelOf(mode), card);
        m_themes->addButton(choice, static_cast<int>(mode));
        line->addWidget(choice);
        // Assistive technology toggles without a click.
        connect(choice, &QRadioButton::toggled, this, [this, mode](bool chosen) {
            if (chosen)
                onThemeChosen(static_cast<int>(mode));
        });
    }
    line->addStretch();
    card->body()->addLayout(line);
    return card;
}

Card* SettingsPage::buildPasswordCard()
{
    auto* card = new Card(u"启动密码"_s, this);
    card->setHint(u"密码只阻止他人打开本软件，不会加密数据文件。"_s);
    m_passwordState = plainLabel({}, card);
    m_passwordState->setObjectName(u"passwordState"_s);
    card->body()->addWidget(m_passwordState);

    using Action = PasswordDialog::Action;
    struct Choice {
        Action action;
        QString text;
        QString done;
    };
    auto* line = new QHBoxLayout;
    line->setSpacing(8);
    for (const Choice& choice : { Choice { Action::Set, u"设置密码"_s, u"启动密码已设置"_s },
             Choice { Action::Change, u"修改密码"_s, u"启动密码已修改"_s },
             Choice { Action::TurnOff, u"关闭密码"_s, u"启动密码已关闭"_s } }) {
        QPushButton* button = makeButton(choice.text, ButtonRole::Default, card);
        m_passwordButtons.insert(choice.action, button);
        line->addWidget(button);
        connect(button, &QPushButton::clicked, this,
            [this, choice] { onPassword(choice.action, choice.done); });
    }
    line->addStretch();
    card->body()->addLayout(line);
    return card;
}

Card* SettingsPage::buildAboutCard()
{
    auto* card = new Card(u"关于"_s, this);
    card->body()->addWidget(plainLabel(u"Brixa V%1　一人公司财产独立记录工具，全程离线运行。"_s.arg(
                                           QCoreApplication::applicationVersion()),
        card));
    auto* line = new QHBoxLayout;
    QPushButton* disclaimer = makeButton(u"查看免责声明"_s, ButtonRole::Default, card);
    connect(disclaimer, &QPushButton::clicked, this,
        [this] { DisclaimerDialog(DisclaimerDialog::Purpose::ReadAgain, this).exec(); });
    line->addWidget(disclaimer);
    line->addStretch();
    card->body()->addLayout(line);
    return card;
}

void SettingsPage::refresh()
{
    // Showing defaults in the place of what is stored would invite the user to save them.
    const std::optional<CompanyProfile> profile = readProfile();
    m_stored->setEnabled(profile.has_value());
    if (!profile)
        return;
    m_profile = *profile;
    showProfile();
    showPassword();
    m_thresholds->show(m_profile);
    QAbstractButton* current
        = m_themes->button(static_cast<int>(fromCode<ThemeMode>(m_profile.themeMode)));
    const QSignalBlocker silent(current);
    current->setChecked(true);
}

std::optional<CompanyProfile> SettingsPage::readProfile()
{
    ProfileDao profiles;
    std::optional<CompanyProfile> profile = profiles.find();
    m_unreadable->setVisible(!profile);
    if (!profile)
        m_unreadable->setText(u"公司档案无法读取：%1"_s.arg(profiles.lastError()));
    return profile;
}

void SettingsPage::showProfile()
{
    for (qsizetype i = 0; i < m_profileValues.size(); ++i) {
        const QString text
            = m_profile.*ProfileRules::fieldRows.at(static_cast<std::size_t>(i)).text;
        m_profileValues.at(i)->setText(TextRules::isBlank(text) ? u"未填写"_s : text);
    }
}

void SettingsPage::showPassword()
{
    const bool enabled = m_profile.passwordEnabled;
    m_passwordState->setText(
        enabled ? u"已开启：打开软件时需要输入密码。"_s : u"未开启：任何人都可以打开本软件。"_s);
    using Action = PasswordDialog::Action;
    m_passwordButtons.value(Action::Set)->setVisible(!enabled);
    m_passwordButtons.value(Action::Change)->setVisible(enabled);
    m_passwordButtons.value(Action::TurnOff)->setVisible(enabled);
}

void SettingsPage::onEditProfile()
{
    const std::optional<CompanyProfile> profile = readProfile();
    if (!profile)
        return;
    ProfileDialog dialog(*profile, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    refresh();
    Toast::show(window(), u"公司档案已保存"_s);
}

void SettingsPage::onSaveThresholds()
{
    if (m_thresholds->showProblem())
        return;
    const std::optional<CompanyProfile> profile = readProfile();
    if (!profile)
        return;
    ProfileDao profiles;
    if (!profiles.save(m_thresholds->edited(*profile))) {
        MessageBox::warn(
            this, u"保存失败"_s, u"风险提醒标准无法保存：%1"_s.arg(profiles.lastError()));
        return;
    }
    RiskService().reevaluateAll();
    refresh();
    Toast::show(window(), u"标准已保存，风险已重算"_s);
}

void SettingsPage::onThemeChosen(int mode)
{
    const auto chosen = static_cast<ThemeMode>(mode);
    if (chosen == Theme::instance().mode())
        return;
    ProfileDao profiles;
    if (!profiles.setThemeMode(codeOf(chosen))) {
        MessageBox::warn(this, u"保存失败"_s, u"外观设置无法保存：%1"_s.arg(profiles.lastError()));
        refresh();
        return;
    }
    Theme::instance().apply(chosen);
}

void SettingsPage::onPassword(PasswordDialog::Action action, const QString& done)
{
    PasswordDialog dialog(action, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    refresh();
    Toast::show(window(), done);
}
