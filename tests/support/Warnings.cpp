#include "support/Warnings.h"

#include <QRegularExpression>
#include <QTest>

void expectWarnings(const QStringList& patterns, QtMsgType type)
{
    for (const QString& pattern : patterns)
        QTest::ignoreMessage(type, QRegularExpression(u'^' + pattern));
}
