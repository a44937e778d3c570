#pragma once

class QWidget;
struct Voucher;

/// What every page that shows vouchers offers for one of them. True when the archive has changed.
namespace VoucherActions {

[[nodiscard]] bool edit(QWidget* parent, const Voucher& voucher);

/// Removes row, file and links after a question.
[[nodiscard]] bool remove(QWidget* parent, const Voucher& voucher);

} // namespace VoucherActions
