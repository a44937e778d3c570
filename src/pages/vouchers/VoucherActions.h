#pragma once

#include <QList>

class QWidget;
struct Voucher;
struct VoucherCardData;

/// What every page that shows vouchers offers for one of them. A bool tells whether the archive has
/// changed.
namespace VoucherActions {

/// Shows the files of the vouchers in the program, beginning with this one; the one that was shown
/// last. 0 when it is not among them.
qint64 quickPreview(QWidget* parent, const QList<VoucherCardData>& vouchers, qint64 voucherId);

[[nodiscard]] bool edit(QWidget* parent, const Voucher& voucher);

/// Removes row, file and links after a question.
[[nodiscard]] bool remove(QWidget* parent, const Voucher& voucher);

} // namespace VoucherActions
