#pragma once

#include "core/Codes.h"

#include <QDate>
#include <QString>

#include <optional>

/// What the company does for a client; ledger entries and contracts belong to it.
struct Project {
    qint64 id = 0; // 0 until stored
    QString name;
    QString code; // blank: given when stored
    QString clientName;
    ProjectStatus status = ProjectStatus::Planning;
    QDate startDate; // invalid: not set
    QDate endDate; // invalid: not set
    // The dates as they stand, so that one that cannot be read is not taken for an unset one. Not
    // written by the store.
    QString startDateText;
    QString endDateText;
    std::optional<qint64> budgetFen;
    QString manager;
    QString note;
    QString createdAt;
    QString updatedAt;

    bool operator==(const Project&) const = default;
};
