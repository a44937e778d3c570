#include "support/Warnings.h"

#include <QRegularExpression>
#include <QtTest>

void expectWarnings(const QStringList& patterns)
{
    for (const QString& pattern : patterns)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u'^' + pattern));
}
