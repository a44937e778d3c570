#include "dialogs/transaction/RiskPreviewPanel.h"

#include "dialogs/NoticeKind.h"
#include "widgets/Banner.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;

RiskPreviewPanel::RiskPreviewPanel(QWidget* parent)
    : QWidget(parent)
    , m_override(new Banner(BannerKind::Info, this))
    , m_preview(new Banner(BannerKind::Info, this))
{
    m_override->setObjectName(u"overrideBanner"_s);
    m_preview->setObjectName(u"riskPreview"_s);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(m_preview);
    column->addWidget(m_override);
    m_override->hide();
}

void RiskPreviewPanel::showPreview(const RiskPreview& preview)
{
    m_preview->setKind(bannerKindOf(preview.level));
    m_preview->setText(preview.text);
}

void RiskPreviewPanel::showOverride(std::optional<RiskLevel> level)
{
    m_override->setVisible(level.has_value());
    if (level)
        m_override->setText(
            u"本笔流水已人工复核为【%1】。保存后自动判定会更新，但仍以人工复核等级为准；如内容有变，请重新复核。"_s
                .arg(labelOf(*level)));
}
