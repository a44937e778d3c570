#pragma once

#include <QStringList>

/// Announces warnings of the program, or what is graver, by regular expressions for their
/// beginnings, in this order.
void expectWarnings(const QStringList& patterns, QtMsgType type = QtWarningMsg);
