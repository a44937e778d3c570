#pragma once

#include "services/vouchers/VoucherLinkSummaries.h"

#include <QMap>
#include <QScrollArea>

class VoucherCard;

/// Cards of vouchers in as many columns as there is room for. Only the cards in sight and a row
/// around them exist; they are filled anew as one scrolls, so thousands of vouchers cost no more
/// than a screenful.
class VoucherCardGrid final : public QScrollArea {
    Q_OBJECT

public:
    explicit VoucherCardGrid(QWidget* parent = nullptr);

    void setVouchers(const QList<VoucherCardData>& vouchers);
    const QList<VoucherCardData>& vouchers() const { return m_vouchers; }
    /// The vouchers shown; null for one that is not among them.
    const VoucherCardData* find(qint64 voucherId) const;

    /// Makes the grid as high as its cards, up to so many rows; 0, as it is at first, leaves the
    /// height to the layout around it.
    void setMostRows(int rows);
    /// What removing a link means here, for the tool tip of the button.
    void setUnlinkHint(const QString& hint);

signals:
    void previewRequested(qint64 id);
    void quickPreviewRequested(qint64 id);
    void folderRequested(qint64 id);
    void editRequested(qint64 id);
    void deleteRequested(qint64 id);
    void unlinkRequested(qint64 id);
    void projectLinkClicked(qint64 projectId);
    void txLinkClicked(qint64 txId);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    void layOut();
    void fill();
    void recycle(int first, int end);
    VoucherCard* makeCard();
    QRect placeOf(int position) const;
    void orderTabs();

    QList<VoucherCardData> m_vouchers;
    QMap<int, VoucherCard*> m_shown; // by position
    QList<VoucherCard*> m_spare;
    int m_columns = 1;
    int m_cardWidth = 0;
    int m_mostRows = 0;
    QString m_unlinkHint;
};
