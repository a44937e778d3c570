#pragma once

#include <QtGlobal>

/// Makes writing beyond a size fail the way a full disk does, for as long as it lives.
class FileSizeLimit final {
public:
    explicit FileSizeLimit(qint64 bytes);
    ~FileSizeLimit();
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    qint64 m_before = 0;
    void (*m_handler)(int) = nullptr;
};
