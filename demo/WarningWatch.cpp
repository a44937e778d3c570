#include "WarningWatch.h"

#include <QMutex>

#include <utility>

namespace {

QMutex guard;
QStringList warnings;
QtMessageHandler before = nullptr;

void watch(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    // What the offscreen platform says of itself is no finding; the rest is in the log.
    if (type == QtDebugMsg || type == QtInfoMsg
        || text.startsWith(QLatin1String("This plugin does not support")))
        return;
    {
        const QMutexLocker lock(&guard);
        warnings += text;
    }
    if (before)
        before(type, context, text);
}

} // namespace

WarningWatch::WarningWatch()
{
    before = qInstallMessageHandler(watch);
}

WarningWatch::~WarningWatch()
{
    qInstallMessageHandler(before);
}

QStringList WarningWatch::take() const
{
    const QMutexLocker lock(&guard);
    return std::exchange(warnings, {});
}
