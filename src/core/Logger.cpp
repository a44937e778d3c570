#include "core/Logger.h"

#include "core/AppPaths.h"
#include "core/LogWriter.h"
#include "core/TextRules.h"

#include <QtGlobal>

#include <memory>
#include <mutex>

namespace Logger {

namespace {

void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message);

// Threads may log while the logger ends: each call holds its own share of the writer.
struct State {
    ~State() { finish(); }

    std::mutex mutex;
    std::shared_ptr<LogWriter> writer;
    QtMessageHandler previous = nullptr;
};

State& state()
{
    static State instance;
    return instance;
}

QByteArrayView levelTag(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "DEBUG";
    case QtWarningMsg:
        return "WARN ";
    case QtCriticalMsg:
        return "ERROR";
    case QtFatalMsg:
        return "FATAL";
    case QtInfoMsg:
        return "INFO ";
    }
    return "?    ";
}

QByteArray formattedLine(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    QByteArray line = TextRules::currentTimestamp().toUtf8();
    line += ' ';
    line += levelTag(type);
    line += ' ';
    line += message.toUtf8();
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        line += "   [";
        line += context.function ? context.function : "";
        line += ']';
    }
    line += '\n';
    return line;
}

void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    std::shared_ptr<LogWriter> writer;
    QtMessageHandler previous = nullptr;
    QByteArray line = formattedLine(type, context, message);
    {
        State& current = state();
        const std::lock_guard lock(current.mutex);
        writer = current.writer;
        previous = current.previous;
    }
    if (writer) {
        writer->enqueue(std::move(line));
        // Qt aborts as soon as the handlers return: the reason must reach the file before.
        if (type == QtFatalMsg)
            writer->waitUntilWritten(std::chrono::seconds(2));
    }
    if (previous)
        previous(type, context, message);
}

} // namespace

void install()
{
    State& current = state();
    const std::lock_guard lock(current.mutex);
    if (current.previous)
        return;
    current.writer = std::make_shared<LogWriter>(AppPaths::logsDir());
    current.previous = qInstallMessageHandler(handleMessage);
}

void finish()
{
    std::shared_ptr<LogWriter> writer;
    {
        State& current = state();
        const std::lock_guard lock(current.mutex);
        if (!current.previous)
            return;
        qInstallMessageHandler(current.previous);
        current.previous = nullptr;
        writer.swap(current.writer);
    }
    writer->finish();
}

} // namespace Logger
