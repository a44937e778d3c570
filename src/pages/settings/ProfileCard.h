#pragma once

#include "pages/settings/SettingsCard.h"

#include <QList>

/// Company and owner as the documents name them.
class ProfileCard final : public SettingsCard {
    Q_OBJECT

public:
    explicit ProfileCard(QWidget* parent = nullptr);

    void showProfile(const CompanyProfile& profile) override;

private:
    void onEdit();

    QList<QLabel*> m_values;
};
