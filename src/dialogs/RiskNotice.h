#pragma once

#include <QString>

class QWidget;

/// Tells whether the risk levels have followed a change of the ledger.
namespace RiskNotice {

/// Says in a box that the change is stored but the levels may be wrong, when they are behind.
/// True when it did.
bool warnIfBehind(QWidget* parent);

/// The same, else the short message that all is done.
void tell(QWidget* parent, const QString& done);

} // namespace RiskNotice
