#pragma once

class Findings;

/// The suites over the program's own data and rules. Those that write rows rely on a transaction
/// that the caller rolls back; those that write files use a temporary folder.
namespace Suites {

/// Beyond so many entries the whole ledger is not evaluated again: the check must stay short.
inline constexpr int largestEvaluatedLedger = 2000;

void schema(Findings& findings);
void profile(Findings& findings); // writes rows
void money(Findings& findings);
void codes(Findings& findings);
void stores(Findings& findings); // writes rows
void riskRules(Findings& findings); // writes rows
void links(Findings& findings); // writes rows
void numbering(Findings& findings); // writes rows
void documentTexts(Findings& findings);
void vouchers(Findings& findings); // writes a temporary file
void csv(Findings& findings); // writes temporary files

} // namespace Suites
