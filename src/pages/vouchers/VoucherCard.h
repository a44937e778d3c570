#pragma once

#include "services/vouchers/VoucherLinkSummaries.h"

#include <QFrame>

class ElidedLabel;
class QLabel;
class QPushButton;
class VoucherThumbnail;

/// One voucher as a tile: picture, name, what it is, what it is linked to, and what can be done
/// with it. The links are followed with the mouse or with Tab and Enter.
class VoucherCard final : public QFrame {
    Q_OBJECT

public:
    static constexpr int narrowest = 316;
    static constexpr int cardHeight = 144;

    explicit VoucherCard(QWidget* parent = nullptr);

    void showVoucher(const VoucherCardData& voucherData);
    qint64 voucherId() const { return m_data.voucher.id; }

    /// What the last button does here, for its tool tip.
    void setUnlinkHint(const QString& hint);

    /// What Tab stops at, in order.
    QList<QWidget*> tabStops() const;

signals:
    /// By the button: in the desktop's own program.
    void previewRequested(qint64 id);
    /// By the picture: in this program.
    void quickPreviewRequested(qint64 id);
    void folderRequested(qint64 id);
    void editRequested(qint64 id);
    void deleteRequested(qint64 id);
    void unlinkRequested(qint64 id);
    void projectLinkClicked(qint64 projectId);
    void txLinkClicked(qint64 txId);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    using Request = void (VoucherCard::*)(qint64 id);
    void addButton(QLayout* line, const QString& text, Request request);
    QWidget* buildTexts();
    /// The links in the colours of the present theme.
    void showLinks();
    void onLinkActivated(const QString& href);

    VoucherCardData m_data;
    VoucherThumbnail* m_thumbnail = nullptr;
    ElidedLabel* m_name = nullptr;
    QLabel* m_meta = nullptr;
    QLabel* m_links = nullptr;
    QList<QPushButton*> m_buttons;
};
