#pragma once

#include <QStringList>

/// Announces warnings of the program by regular expressions for their beginnings, in this order.
void expectWarnings(const QStringList& patterns);
