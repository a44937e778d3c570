#pragma once

#include "core/Codes.h"

#include <QLabel>

class QPainter;

/// A risk level as glyph and label on its own ground; a trailing " *" tells that a person
/// overrode the automatic result. Tables paint the same badge through the static functions.
class RiskBadge final : public QLabel {
    Q_OBJECT

public:
    explicit RiskBadge(RiskLevel level, bool overridden = false, QWidget* parent = nullptr);

    void setLevel(RiskLevel level, bool overridden);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    /// "▲ 高风险 *"
    static QString text(RiskLevel level, bool overridden);

    /// The size that the badge needs with a font.
    static QSize sizeFor(const QFont& font, RiskLevel level, bool overridden);

    /// Paints the badge with the painter's font, left-aligned and vertically centred in `cell`.
    static void paint(QPainter* painter, const QRect& cell, RiskLevel level, bool overridden);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    RiskLevel m_level;
    bool m_overridden;
};
