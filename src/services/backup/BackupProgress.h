#pragma once

#include <functional>

/// Counts the files of a backup or restore for whoever paints its progress. Each database counts
/// as one file.
class BackupProgress final {
public:
    using Callback = std::function<void(int done, int total)>;

    BackupProgress(const Callback& callback, int total)
        : m_callback(callback)
        , m_total(total)
    {
    }

    void step()
    {
        ++m_done;
        if (m_callback)
            m_callback(m_done, m_total);
    }

private:
    const Callback& m_callback;
    int m_done = 0;
    int m_total;
};
