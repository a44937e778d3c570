#pragma once

#include "db/CompanyProfile.h"
#include "db/Contract.h"
#include "db/DocumentRecord.h"
#include "db/Project.h"
#include "db/Transaction.h"
#include "db/Voucher.h"

/// Records for the suites to write, read and throw away, with characters that SQL, HTML and CSV
/// give a meaning of their own.
namespace Samples {

QString awkwardText();

CompanyProfile company();
Project project();
Contract contract(qint64 projectId);
/// Company money received through the owner's private account: the rules call it a high risk.
Transaction riskyEntry();
Voucher voucher();
DocumentRecord document(const QString& number);

} // namespace Samples
