#pragma once

#include <QWidget>

class Card;
class QLabel;
class VoucherCardGrid;
struct Voucher;

/// The vouchers linked to a project. Files dropped here are archived for the project.
class ProjectVouchersCard final : public QWidget {
    Q_OBJECT

public:
    explicit ProjectVouchersCard(QWidget* parent = nullptr);

    /// Shows the vouchers of a project; the reason in Chinese when they cannot be read.
    [[nodiscard]] QString showProject(qint64 projectId);

signals:
    /// Something was written.
    void changed();
    void projectRequested(qint64 projectId);
    void entryRequested(qint64 entryId);

private:
    void connectCards();
    void onAddVoucher(const QStringList& files);
    void onLinkExistingVoucher();
    void onUnlink(qint64 voucherId);

    qint64 m_projectId = 0;
    Card* m_card;
    QLabel* m_empty;
    VoucherCardGrid* m_grid = nullptr;
};
