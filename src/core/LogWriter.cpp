#include "core/LogWriter.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

thread_local bool isWriterThread = false;

} // namespace

LogWriter::LogWriter(QString logsDir, Clock today)
    : m_logsDir(std::move(logsDir))
    , m_today(std::move(today))
{
}

LogWriter::~LogWriter()
{
    finish();
}

void LogWriter::enqueue(QByteArray line)
{
    if (isWriterThread)
        return;
    {
        const std::lock_guard lock(m_mutex);
        if (m_stop)
            return;
        m_queue.push_back(std::move(line));
        ++m_taken;
        if (!m_thread.joinable())
            m_thread = std::thread(&LogWriter::run, this);
    }
    m_wake.notify_one();
}

bool LogWriter::waitUntilWritten(std::chrono::milliseconds limit)
{
    if (isWriterThread)
        return false;
    std::unique_lock lock(m_mutex);
    const std::size_t wanted = m_taken;
    return m_written.wait_for(lock, limit, [this, wanted] { return m_done >= wanted; });
}

void LogWriter::finish()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stop = true;
    }
    m_wake.notify_one();
    if (m_thread.joinable())
        m_thread.join();
}

void LogWriter::run()
{
    isWriterThread = true;
    bool stopping = false;
    while (!stopping) {
        Batch batch;
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_stop || !m_queue.empty(); });
            batch.swap(m_queue);
            // Read together with the queue: a line that came before the stop is in this batch.
            stopping = m_stop;
        }
        if (!batch.empty())
            write(batch);
        {
            const std::lock_guard lock(m_mutex);
            m_done += batch.size();
        }
        m_written.notify_all();
    }
    m_file.close();
}

void LogWriter::write(const Batch& batch)
{
    openTodaysFile();
    if (!m_file.isOpen())
        return;
    for (const QByteArray& line : batch)
        m_file.write(line);
    m_file.flush();
}

void LogWriter::openTodaysFile()
{
    const QString path = u"%1/log_%2.txt"_s.arg(m_logsDir, m_today().toString(u"yyyyMMdd"));
    if (m_file.isOpen() && m_file.fileName() == path)
        return;
    m_file.close();
    m_file.setFileName(path);
    m_file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Text);
}
