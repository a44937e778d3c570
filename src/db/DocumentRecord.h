#pragma once

#include "core/Codes.h"

#include <QDate>
#include <QString>

#include <optional>

/// One generated statutory document.
struct DocumentRecord {
    qint64 id = 0; // 0 until stored
    DocType docType = DocType::AnnualDecision;
    QString docNo;
    QString title;
    int docYear = 0; // the year it concerns; 0 for none
    QDate docDate;
    std::optional<Direction> fundDirection; // In: from the owner to the company
    QString fundNature;
    QDate settleDate; // invalid: none agreed
    QString extraText;
    QString selectedItems; // opaque to the store
    QString contentHtml;
    QString filePath; // absolute, of the PDF
    QString createdAt;
};
