#pragma once

#include "core/Codes.h"
#include "db/Voucher.h"

#include <QList>

class QWidget;
struct Contract;

/// Ties archived vouchers to a project or a contract and undoes such ties, as the user chooses in
/// a dialog. What came of it is told to the user.
namespace VoucherTies {

enum class Outcome { Declined, Failed, Written };

/// Offers the archive without the vouchers that are tied already.
Outcome add(QWidget* parent, TargetType target, qint64 targetId, const QList<Voucher>& tied);

/// Offers the vouchers that are tied to the contract.
Outcome remove(QWidget* parent, const Contract& contract, const QList<Voucher>& tied);

} // namespace VoucherTies
