#pragma once

#include "core/Codes.h"

#include <QString>

/// A voucher or document that proves something about a project, contract or ledger entry.
struct EntityLink {
    qint64 id = 0;
    SourceType sourceType = SourceType::Voucher;
    qint64 sourceId = 0;
    TargetType targetType = TargetType::Project;
    qint64 targetId = 0;
    QString createdAt;
};

/// What a voucher is linked to, with its name where the kind of row has one.
struct VoucherTarget {
    qint64 voucherId = 0;
    qint64 targetId = 0;
    QString name;
};
