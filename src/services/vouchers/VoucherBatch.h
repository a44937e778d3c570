#pragma once

#include "services/NoticeLevel.h"
#include "services/vouchers/VoucherQueue.h"
#include "services/vouchers/VoucherService.h"

#include <QList>
#include <QStringList>

#include <functional>

/// Files that are archived together: one description, one set of links.
namespace VoucherBatch {

struct Order {
    QList<QueuedFile> files; // those that are not valid are passed over
    VoucherDescription description;
    qint64 projectId = 0; // 0: none
    QList<qint64> transactionIds;
};

struct Outcome {
    QList<qint64> voucherIds;
    QStringList archivedPaths; // of the source files, in the same order
    int duplicates = 0; // of the archived ones
    QStringList failures; // a line each
    qsizetype untried = 0; // valid files that were left when the user stopped
};

/// What the user is told at the end.
struct Notice {
    NoticeLevel level;
    QString title; // Chinese
    QString text; // Chinese, plain
};

/// Told before each file how many of how many are done; false stops the import there.
using Progress = std::function<bool(qsizetype done, qsizetype total)>;

/// Archives the valid files in their order, each for itself: what is in stays in, whatever happens
/// to the others.
[[nodiscard]] Outcome run(const Order& order, const Progress& progress);

/// The name of a voucher: as entered for a single file, numbered from 01 among several.
QString nameOf(const QString& entered, qsizetype number, qsizetype count);

Notice noticeOf(const Outcome& outcome);

} // namespace VoucherBatch
