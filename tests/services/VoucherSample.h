#pragma once

#include "services/vouchers/VoucherService.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

/// What the tests of the archive work on.
namespace VoucherSample {

/// Writes a file outside of the archive and returns its path; empty when that failed.
QString makeSource(const QString& name, const QByteArray& content = "receipt");

/// Adds ledger entries 1 to `count`, each of which is flagged as long as it has no voucher.
bool addEntries(int count);

/// Archives a file under its own name, linked to the entries; the voucher's number, 0 on failure.
qint64 archived(const QString& name, const QList<qint64>& transactionIds = {});

/// Where the only voucher's copy lies.
QString copyPath();

/// Rows, links and files of the archive, such as "2 vouchers, 3 links, 2 files".
QString inventory();

/// The levels of the entries in the order of their numbers.
QString levels();

/// Announces warnings by their beginnings, in this order.
void expectWarnings(const QStringList& patterns);

/// Makes every commit fail that comes after the writing of such a row: "INSERT ON vouchers".
QStringList failingCommit(const QString& event);

/// The whole disk is full for files beyond this size while it lives.
class FullDisk final {
public:
    explicit FullDisk(qint64 largestFile);
    ~FullDisk();
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
#ifdef Q_OS_UNIX
    rlimit m_before {};
    void (*m_previousHandler)(int) = nullptr;
#endif
};

} // namespace VoucherSample
