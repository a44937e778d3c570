#pragma once

#include "db/CompanyProfile.h"
#include "pages/IPage.h"

#include <QMap>

#include <optional>

class Banner;
class ScrollColumn;
class SettingsCard;

/// What the owner can set and look after, a card for each subject: company profile, thresholds of
/// the risk rules, appearance, start-up password, backups, data folder, self-check; and what the
/// program is. The parameter "section" ("profile", "backup" or "selfcheck") leads to a card.
class SettingsPage final : public IPage {
    Q_OBJECT

public:
    explicit SettingsPage(QWidget* parent = nullptr);

    void refresh() override;
    void applyNavParams(const NavParams& params) override;

private:
    /// The cards that rest on the stored profile, and those that work without it.
    QList<SettingsCard*> buildStoredCards();
    QList<SettingsCard*> buildFurtherCards();
    void adopt(SettingsCard* card);

    /// The stored profile; the page says so when it cannot be read.
    std::optional<CompanyProfile> readProfile();
    void leadTo(SettingsCard* card);

    Banner* m_unreadable = nullptr;
    QWidget* m_stored = nullptr; // everything that rests on the stored profile
    ScrollColumn* m_scroll;
    QList<SettingsCard*> m_cards;
    QMap<QString, SettingsCard*> m_sections;
    SettingsCard* m_wanted = nullptr;
};
