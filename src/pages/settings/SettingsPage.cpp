#include "pages/settings/SettingsPage.h"

#include "core/ProgramEnd.h"
#include "db/ProfileDao.h"
#include "pages/settings/AboutCard.h"
#include "pages/settings/AppearanceCard.h"
#include "pages/settings/BackupCard.h"
#include "pages/settings/DataFolderCard.h"
#include "pages/settings/PasswordCard.h"
#include "pages/settings/ProfileCard.h"
#include "pages/settings/SelfCheckCard.h"
#include "pages/settings/ThresholdCard.h"
#include "widgets/Banner.h"
#include "widgets/ScrollColumn.h"

#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int spacing = 16;

} // namespace

SettingsPage::SettingsPage(QWidget* parent)
    : IPage(u"系统设置"_s, parent)
    , m_scroll(new ScrollColumn(this))
{
    setObjectName(u"SettingsPage"_s);
    QVBoxLayout* column = m_scroll->column();
    m_unreadable = new Banner(BannerKind::Danger, this);
    m_unreadable->hide();
    column->addWidget(m_unreadable);
    m_stored = new QWidget(this);
    auto* stored = new QVBoxLayout(m_stored);
    stored->setContentsMargins(0, 0, 0, 0);
    stored->setSpacing(spacing);
    for (SettingsCard* card : buildStoredCards())
        stored->addWidget(card);
    column->addWidget(m_stored);
    for (SettingsCard* card : buildFurtherCards())
        column->addWidget(card);
    column->addStretch();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_scroll);
}

QList<SettingsCard*> SettingsPage::buildStoredCards()
{
    auto* profile = new ProfileCard(this);
    m_sections.insert(u"profile"_s, profile);
    const QList<SettingsCard*> cards { profile, new ThresholdCard(this), new AppearanceCard(this),
        new PasswordCard(this) };
    for (SettingsCard* card : cards)
        adopt(card);
    return cards;
}

QList<SettingsCard*> SettingsPage::buildFurtherCards()
{
    auto* backup = new BackupCard(this);
    auto* selfCheck = new SelfCheckCard(this);
    m_sections.insert(u"backup"_s, backup);
    m_sections.insert(u"selfcheck"_s, selfCheck);
    connect(backup, &BackupCard::restartRequested, this, &ProgramEnd::restart);
    connect(backup, &BackupCard::endRequested, this, &ProgramEnd::afterFailure);
    const QList<SettingsCard*> cards { backup, new DataFolderCard(this), selfCheck,
        new AboutCard(this) };
    for (SettingsCard* card : cards)
        adopt(card);
    return cards;
}

void SettingsPage::adopt(SettingsCard* card)
{
    m_cards += card;
    connect(card, &SettingsCard::profileChanged, this, &SettingsPage::refresh);
    connect(card, &SettingsCard::statusChanged, this, &IPage::statusChanged);
}

void SettingsPage::refresh()
{
    // Showing defaults in the place of what is stored would invite the user to save them.
    const std::optional<CompanyProfile> profile = readProfile();
    m_stored->setEnabled(profile.has_value());
    for (SettingsCard* card : std::as_const(m_cards)) {
        card->refresh();
        if (profile)
            card->showProfile(*profile);
    }
    if (SettingsCard* card = std::exchange(m_wanted, nullptr))
        QTimer::singleShot(0, card, [this, card] { leadTo(card); });
}

void SettingsPage::applyNavParams(const NavParams& params)
{
    m_wanted = m_sections.value(params.value(u"section"_s).toString());
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

// Once the page has been laid out: on its first showing the cards have no place before.
void SettingsPage::leadTo(SettingsCard* card)
{
    m_scroll->widget()->layout()->activate();
    const int top = card->mapTo(m_scroll->widget(), QPoint()).y();
    m_scroll->verticalScrollBar()->setValue(top - spacing);
    card->focusFirstControl();
}
