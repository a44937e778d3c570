#pragma once

#include "core/Codes.h"

#include <QByteArrayView>
#include <QStringList>

/// One entry of the fund ledger as files in UTF-8 take it: what tables of the ledger show, with
/// texts in UTF-8 that belong to somebody else.
struct LedgerLine {
    qint64 id = 0;
    QByteArrayView date; // "yyyy-MM-dd", empty when unset
    QByteArrayView summary;
    Direction direction = Direction::In;
    qint64 amountFen = 0;
    AccountType ownerAccountType = AccountType::Company;
    QByteArrayView counterpartyName;
    AccountType counterpartyAccountType = AccountType::Unknown;
    Category category = Category::Other;
    bool hasProject = false;
    QByteArrayView projectName;
    RiskLevel riskLevel = RiskLevel::Normal; // in force
    bool riskIsManual = false;
    QStringList riskReasons; // of the automatic level
    QByteArrayView note;
    qint64 voucherCount = 0;
};
