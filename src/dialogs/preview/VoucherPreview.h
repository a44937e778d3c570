#pragma once

#include "db/Voucher.h"

#include <QDialog>
#include <QFutureWatcher>
#include <QList>

class ElidedLabel;
class FileView;
class QHBoxLayout;
class QKeySequence;
class QLabel;
class QPushButton;

/// Shows what is in the files of vouchers, one after the other, and whether each file is still the
/// one that was archived.
class VoucherPreview final : public QDialog {
    Q_OBJECT

public:
    /// Opens at a position of the list.
    VoucherPreview(const QList<Voucher>& vouchers, qsizetype position, QWidget* parent = nullptr);
    ~VoucherPreview() override;

    /// The voucher that was shown last.
    qint64 shownId() const { return m_vouchers.at(m_position).id; }

private:
    QWidget* buildHead();
    QWidget* buildBar();
    QPushButton* addButton(QHBoxLayout* line, const QString& text, const QKeySequence& key,
        void (VoucherPreview::*act)());
    void addKeys();

    void showAt(qsizetype position);
    void showPrevious() { showAt(m_position - 1); }
    void showNext() { showAt(m_position + 1); }
    void showPreviousPage();
    void showNextPage();
    void zoomIn();
    void zoomOut();
    void showNatural();
    void fitPage();
    void fitWidth();
    void openInDesktop();
    void onViewChanged();
    /// Compares the file's content with the one that was archived.
    void checkFile(const QString& path);
    void showCheck();

    const QList<Voucher> m_vouchers;
    qsizetype m_position = 0;
    FileView* m_view;
    ElidedLabel* m_name = nullptr;
    QLabel* m_meta = nullptr;
    QLabel* m_hash = nullptr;
    QLabel* m_check = nullptr;
    QLabel* m_place = nullptr;
    QLabel* m_pages = nullptr;
    QLabel* m_zoom = nullptr;
    QPushButton* m_previous = nullptr;
    QPushButton* m_next = nullptr;
    QPushButton* m_previousPage = nullptr;
    QPushButton* m_nextPage = nullptr;
    QList<QPushButton*> m_zoomButtons;
    QFutureWatcher<QString> m_hashing;
};
