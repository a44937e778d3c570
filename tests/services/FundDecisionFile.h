#pragma once

#include "services/documents/DocumentService.h"

#include <QByteArray>
#include <QMap>
#include <QString>

/// A fund decision and its PDF in the exports folder, for tests of what becomes of the two.
namespace FundDecisionFile {

/// Stores the company and the two entries that the decision covers.
[[nodiscard]] bool storeLedger();
DocumentResult generateFund();

/// Where the first decision of the year lies.
QString fundName();
QString fundPath();
/// What is reported when it cannot be written.
QString cannotWrite();

/// Names and contents of the exports folder.
QMap<QString, QByteArray> exportsContent();

} // namespace FundDecisionFile
