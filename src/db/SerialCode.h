#pragma once

#include <QString>

/// Running codes such as "P-2026-0001": a fixed beginning and a sequence of at least four digits.
namespace SerialCode {

/// The code of a sequence; a sequence below 1 (hand-typed codes can lead there) counts as 1.
QString text(const QString& prefix, qint64 sequence);

} // namespace SerialCode
