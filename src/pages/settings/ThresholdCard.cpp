#include "pages/settings/ThresholdCard.h"

#include "db/ProfileDao.h"
#include "dialogs/RiskNotice.h"
#include "dialogs/ThresholdForm.h"
#include "services/risk/RiskService.h"
#include "widgets/BusyNotice.h"
#include "widgets/ButtonRole.h"
#include "widgets/FormRows.h"
#include "widgets/MessageBox.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <optional>

using namespace Qt::StringLiterals;

ThresholdCard::ThresholdCard(QWidget* parent)
    : SettingsCard(u"风险提醒标准"_s, parent)
    , m_form(new ThresholdForm(this))
{
    setHint(u"保存后会按新的标准重新判断全部流水。"_s);
    auto* rows = new FormRows;
    m_form->addRows(rows);
    // Fields for short numbers need not be as wide as the window.
    auto* part = new QHBoxLayout;
    part->addLayout(rows, 3);
    part->addStretch(2);
    body()->addLayout(part);

    QHBoxLayout* line = addButtonLine();
    QPushButton* save = makeButton(u"保存标准"_s, ButtonRole::Primary, this);
    QPushButton* defaults = makeButton(u"恢复默认"_s, ButtonRole::Default, this);
    line->addWidget(save);
    line->addWidget(defaults);
    line->addStretch();
    connect(save, &QPushButton::clicked, this, &ThresholdCard::onSave);
    connect(defaults, &QPushButton::clicked, this, [this] { m_form->show(CompanyProfile()); });
}

void ThresholdCard::showProfile(const CompanyProfile& profile)
{
    // Another card's saving shows the page anew; what was typed here and not saved yet stays.
    const bool isUntouched = !m_shown || m_form->shows(*m_shown);
    if (isUntouched)
        m_form->show(profile);
    if (isUntouched || m_form->shows(profile))
        m_shown = profile;
}

void ThresholdCard::onSave()
{
    if (m_form->showProblem())
        return;
    const std::optional<CompanyProfile> profile = readProfile();
    if (!profile)
        return;
    if (const auto problem = RiskService::storeProfile(m_form->edited(*profile))) {
        MessageBox::warn(this, u"保存失败"_s, u"风险提醒标准无法保存：%1"_s.arg(*problem));
        return;
    }
    {
        std::optional<BusyNotice> notice;
        if (RiskService::takesNoticeablyLong())
            notice.emplace(this, u"标准已保存，正在重算风险…"_s);
        RiskService().reevaluateAll();
    }
    emit profileChanged();
    RiskNotice::tell(this, u"标准已保存，风险已重算"_s);
}
