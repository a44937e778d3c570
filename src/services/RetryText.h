#pragma once

#include <QString>

/// The reason of a failure followed by the request to try again, which some reasons bring already.
inline QString askingToRetry(const QString& reason)
{
    const QString request = QStringLiteral("请重试。");
    const bool asksAlready = reason.endsWith(request) || reason.endsWith(request.chopped(1));
    return asksAlready ? reason : reason + request;
}
