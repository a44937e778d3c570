#pragma once

#include "core/Codes.h"

#include <QDate>
#include <QString>

// What the ledger adds up to, as the database counts it. Amounts are fen.

/// The entries of one direction on one side's account.
struct AccountDirectionSum {
    AccountType account = AccountType::Company;
    Direction direction = Direction::In;
    qint64 count = 0;
    qint64 sumFen = 0;
};

/// The entries of one month.
struct MonthSum {
    QString month; // "yyyy-MM"
    qint64 incomeFen = 0;
    qint64 expenseFen = 0;
};

/// The ledger entries that one document covers.
struct CoveredSum {
    qint64 documentId = 0;
    qint64 count = 0;
    qint64 sumFen = 0;
    QDate firstDate; // of the earliest of them
};
