#pragma once

#include <QByteArray>
#include <QDate>
#include <QFile>
#include <QString>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

/// Writes finished lines to one file per calendar day, on a thread of its own, in the order in
/// which they came. A file that cannot be opened loses its batch silently and is tried again
/// with the next one. Lines of the writer's own thread are dropped: a warning raised while
/// writing would otherwise raise the next one.
class LogWriter final {
public:
    using Clock = std::function<QDate()>;

    /// `logsDir` is taken once; the files are `log_yyyyMMdd.txt` by the clock's local date.
    explicit LogWriter(
        QString logsDir, Clock today = [] { return QDate::currentDate(); });
    /// Finishes.
    ~LogWriter();
    LogWriter(const LogWriter&) = delete;
    LogWriter& operator=(const LogWriter&) = delete;

    /// Takes a line that ends with "\n", from any thread. The first line starts the thread.
    void enqueue(QByteArray line);

    /// Waits until every line taken so far is in its file, at most for `limit`.
    bool waitUntilWritten(std::chrono::milliseconds limit);

    /// Writes what is queued, ends the thread and closes the file. Later lines are dropped.
    void finish();

private:
    using Batch = std::vector<QByteArray>;

    void run();
    void write(const Batch& batch);
    void openTodaysFile();

    const QString m_logsDir;
    const Clock m_today;

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::condition_variable m_written;
    Batch m_queue;
    std::size_t m_taken = 0;
    std::size_t m_done = 0;
    bool m_stop = false;
    std::thread m_thread;

    // The thread's own.
    QFile m_file;
};
