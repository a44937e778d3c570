#pragma once

#include "services/risk/RiskPreview.h"

#include <QWidget>

class Banner;

/// Tells what the risk rules will say about the entry that is being filled in.
class RiskPreviewPanel final : public QWidget {
    Q_OBJECT

public:
    explicit RiskPreviewPanel(QWidget* parent = nullptr);

    void showPreview(const RiskPreview& preview);
    /// A level that a person gave the entry and that stays in force whatever the rules say.
    void showOverride(std::optional<RiskLevel> level);

private:
    Banner* m_override;
    Banner* m_preview;
};
