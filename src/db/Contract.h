#pragma once

#include "core/Codes.h"

#include <QDate>
#include <QString>

/// A contract of a project, with the company as party A.
struct Contract {
    qint64 id = 0; // 0 until stored
    qint64 projectId = 0;
    QString name;
    QString code; // blank: given when stored
    QString partyB;
    qint64 amountFen = 0;
    QDate signDate; // invalid: cannot be read
    QString signDateText; // as it stands; not written by the store
    ContractStatus status = ContractStatus::Active;
    QString note;
    QString createdAt;
    QString updatedAt;

    bool operator==(const Contract&) const = default;
};
