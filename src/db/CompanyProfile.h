#pragma once

#include <QString>

/// The company, its owner, the thresholds of the risk rules and the program's own settings. A new
/// record carries the defaults of a new database.
struct CompanyProfile {
    QString companyName;
    QString creditCode;
    QString shareholderName;
    QString bankName;
    QString bankAccount;
    QString address;
    QString phone;
    qint64 largeAmountFen = 5'000'000;
    int frequentWindowDays = 30;
    int frequentCount = 3;
    bool passwordEnabled = false;
    QString passwordHash;
    QString passwordSalt;
    QString disclaimerVersion;
    QString disclaimerConfirmedAt;
    QString lastBackupAt;
    QString themeMode = QStringLiteral("light");
    QString createdAt;
    QString updatedAt;

    bool operator==(const CompanyProfile&) const = default;
};
