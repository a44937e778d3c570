#include "support/Warnings.h"

#include <QRegularExpression>
#include <QTest>

void expectWarnings(const QStringList& patterns)
{
    for (const QString& pattern : patterns)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u'^' + pattern));
}
