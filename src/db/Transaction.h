#pragma once

#include "core/Codes.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <optional>

/// One entry of the fund ledger.
struct Transaction {
    qint64 id = 0; // 0 until stored
    QDate transDate;
    QString summary;
    Direction direction = Direction::In;
    qint64 amountFen = 0; // stored entries are above 0
    AccountType ownerAccountType = AccountType::Company;
    QString counterpartyName;
    AccountType counterpartyAccountType = AccountType::Unknown;
    Category category = Category::Other;
    std::optional<qint64> projectId;
    QString note;
    RiskLevel riskLevel = RiskLevel::Normal; // in force: the override if set, else automatic
    RiskLevel riskAutoLevel = RiskLevel::Normal;
    QStringList riskReasons; // of the automatic level
    std::optional<RiskLevel> riskManualOverride;
    QString riskManualNote;
    QString riskEvaluatedAt;
    QString createdAt;
    QString updatedAt;

    // Filled by searches only.
    QString projectName;
    int voucherCount = 0;

    bool operator==(const Transaction&) const = default;
};
// Long lists of entries grow without moving every field on its own.
Q_DECLARE_TYPEINFO(Transaction, Q_RELOCATABLE_TYPE);

/// The other side of an entry, as it was registered last.
struct Counterparty {
    QString name;
    AccountType accountType = AccountType::Unknown;
};

/// A movement between company and owner, as the frequency rule sees it.
struct DatedFlow {
    qint64 id = 0;
    QDate date;
};

/// What a search of the ledger asks for; unset parts do not restrict it.
struct TransactionFilter {
    QDate dateFrom; // inclusive
    QDate dateTo; // inclusive
    std::optional<AccountType> owner;
    std::optional<Category> category;
    std::optional<RiskLevel> risk; // the level in force
    qint64 projectId = 0;
    QString keyword; // in summary or counterparty; % and _ are wildcards
    int limit = 0;
};

/// What the entries of a project add up to.
struct ProjectTotals {
    qint64 incomeFen = 0;
    qint64 expenseFen = 0;
    qint64 count = 0;
};

/// What the entries of a category add up to.
struct CategoryStat {
    Category category = Category::Other;
    qint64 count = 0;
    qint64 incomeFen = 0;
    qint64 expenseFen = 0;
};

/// How many entries have each risk level.
struct RiskLevelCounts {
    qint64 high = 0;
    qint64 medium = 0;
    qint64 low = 0;
    qint64 normal = 0;
};

/// What the risk rules found for one entry.
struct AutoRisk {
    qint64 transactionId = 0;
    RiskLevel level = RiskLevel::Normal;
    QStringList reasons;
};
