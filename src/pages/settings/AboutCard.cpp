#include "pages/settings/AboutCard.h"

#include "dialogs/DisclaimerDialog.h"
#include "widgets/ButtonRole.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

AboutCard::AboutCard(QWidget* parent)
    : SettingsCard(u"关于"_s, parent)
{
    body()->addWidget(makeText(u"Brixa V%1　一人公司财产独立记录工具，全程离线运行。"_s.arg(
        QCoreApplication::applicationVersion())));
    QHBoxLayout* line = addButtonLine();
    QPushButton* disclaimer = makeButton(u"查看免责声明"_s, ButtonRole::Default, this);
    connect(disclaimer, &QPushButton::clicked, this,
        [this] { DisclaimerDialog(DisclaimerDialog::Purpose::ReadAgain, this).exec(); });
    line->addWidget(disclaimer);
    line->addStretch();
}
