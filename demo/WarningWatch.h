#pragma once

#include <QStringList>

/// Collects what Qt and the program warn about while it lives; each warning also goes where it went
/// before. What is only said for information is kept to the program's log.
class WarningWatch final {
public:
    WarningWatch();
    ~WarningWatch();
    WarningWatch(const WarningWatch&) = delete;
    WarningWatch& operator=(const WarningWatch&) = delete;

    /// The warnings since the last call.
    QStringList take() const;
};
