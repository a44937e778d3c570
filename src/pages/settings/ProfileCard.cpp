#include "pages/settings/ProfileCard.h"

#include "core/TextRules.h"
#include "dialogs/ProfileDialog.h"
#include "services/ProfileRules.h"
#include "widgets/ButtonRole.h"
#include "widgets/TextRole.h"
#include "widgets/Toast.h"

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostInToolTip = 400; // characters, some ten lines

} // namespace

ProfileCard::ProfileCard(QWidget* parent)
    : SettingsCard(u"公司档案"_s, parent)
{
    setHint(u"以下信息会写入软件起草的文书，请与营业执照保持一致。"_s);
    QPushButton* edit = makeButton(u"编辑档案"_s, ButtonRole::Default, this);
    edit->setObjectName(u"editProfile"_s);
    addHeadWidget(edit);
    connect(edit, &QPushButton::clicked, this, &ProfileCard::onEdit);

    auto* rows = new QFormLayout;
    rows->setHorizontalSpacing(24);
    rows->setVerticalSpacing(8);
    rows->setContentsMargins(0, 4, 0, 0);
    for (const ProfileRules::FieldRow& row : ProfileRules::fieldRows) {
        QLabel* name = makeText(row.label.toString());
        setTextRole(name, TextRole::Hint);
        QLabel* value = makeValue();
        m_values += value;
        rows->addRow(name, value);
    }
    body()->addLayout(rows);
}

void ProfileCard::showProfile(const CompanyProfile& profile)
{
    for (qsizetype i = 0; i < m_values.size(); ++i) {
        const auto& row = ProfileRules::fieldRows.at(static_cast<std::size_t>(i));
        const QString& text = profile.*row.text;
        // One that is longer than may be entered now must not push everything else out of sight.
        const QString shown = ProfileRules::shortened(row, text);
        setValue(
            m_values.at(i), row.label.toString(), TextRules::isBlank(text) ? u"未填写"_s : shown);
        m_values.at(i)->setToolTip(
            shown == text ? QString() : Qt::convertFromPlainText(text.left(mostInToolTip)));
    }
}

void ProfileCard::onEdit()
{
    const std::optional<CompanyProfile> profile = readProfile();
    if (!profile)
        return;
    ProfileDialog dialog(*profile, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    emit profileChanged();
    Toast::show(window(), u"公司档案已保存"_s);
}
