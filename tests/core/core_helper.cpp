#include "core/AppPaths.h"
#include "core/InstanceLock.h"
#include "core/Logger.h"

#include <QCoreApplication>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

void logLines(int count)
{
    for (int i = 0; i < count; ++i)
        qInfo("line %d", i);
}

int holdLock(const QString& path)
{
    InstanceLock lock(path);
    QTextStream(stdout) << (lock.acquire() == InstanceLock::Outcome::Acquired ? "held" : "refused")
                        << Qt::endl;
    QTextStream(stdin).readLine();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString mode = arguments.value(1);
    if (mode == u"hold"_s)
        return holdLock(arguments.value(2));

    const Logger::FinishGuard guard;
    if (!AppPaths::ensureDirs())
        return 1;
    Logger::install();
    if (mode == u"burst"_s)
        logLines(arguments.value(2).toInt());
    else if (mode == u"fatal"_s)
        qFatal("the last words");
    return 0;
}
