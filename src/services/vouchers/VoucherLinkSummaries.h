#pragma once

#include "db/Voucher.h"

#include <QList>

/// What a voucher is linked to, as far as cards and lists tell it.
struct VoucherCardData {
    struct Target {
        qint64 id = 0;
        QString name;
    };

    Voucher voucher;
    bool linksKnown = true; // false: they could not be read
    // Each in the order in which the links were made.
    QList<Target> projects;
    QList<Target> contracts;
    QList<qint64> transactionIds;

    bool isUnlinked() const
    {
        return linksKnown && projects.isEmpty() && contracts.isEmpty() && transactionIds.isEmpty();
    }
};

namespace VoucherLinkSummaries {

/// The vouchers, in their order, with what they are linked to: three queries, however many
/// vouchers there are.
[[nodiscard]] QList<VoucherCardData> of(const QList<Voucher>& vouchers);

/// "项目：展厅设计；合同：设计合同；流水 2 笔", or that there is no link. Plain text.
QString text(const VoucherCardData& data);

} // namespace VoucherLinkSummaries
