#include "core/ProgramEnd.h"

#include <QCoreApplication>

namespace ProgramEnd {

void restart()
{
    QCoreApplication::exit(restartStatus);
}

void afterFailure()
{
    QCoreApplication::exit(1);
}

} // namespace ProgramEnd
