#include "hostile/LogFilter.h"

namespace {

QtMessageHandler next = nullptr;
QRegularExpression expected;

void pass(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type != QtWarningMsg || !expected.match(text).hasMatch())
        next(type, context, text);
}

} // namespace

LogFilter::LogFilter(const QStringList& patterns)
{
    expected.setPattern(QStringLiteral("^(%1)").arg(patterns.join(QLatin1Char('|'))));
    next = qInstallMessageHandler(pass);
}

LogFilter::~LogFilter()
{
    qInstallMessageHandler(next);
}
