#pragma once

#include "core/CodeTable.h"

#include <QString>

/// What can be said about a file before it is archived.
enum class QueueState { Ready, Duplicate, UnsupportedType, TooLarge, Unreadable };

template <>
inline constexpr auto codeTable<QueueState> = std::to_array<CodeRow<QueueState>>({
    { QueueState::Ready, u"ready", u"待入库" },
    { QueueState::Duplicate, u"duplicate", u"⚠ 疑似重复文件（仍可入库）" },
    { QueueState::UnsupportedType, u"unsupported_type", u"不支持的类型" },
    { QueueState::TooLarge, u"too_large", u"超过 20MB" },
    { QueueState::Unreadable, u"unreadable", u"读取失败（占用？）" },
});
template <> inline constexpr QueueState codeFallback<QueueState> = QueueState::Unreadable;

/// A file that waits to be archived.
struct QueuedFile {
    QString path; // absolute
    qint64 size = 0; // bytes
    QueueState state = QueueState::Unreadable;

    /// Whether an import may be tried.
    bool isValid() const { return state == QueueState::Ready || state == QueueState::Duplicate; }
    /// Without the folder.
    QString fileName() const;
    /// The name that a voucher of this file takes when none is given.
    QString defaultName() const;
};

namespace VoucherQueue {

/// Looks at type and size and, where those will do, reads the file once to compare its content with
/// the archive.
[[nodiscard]] QueuedFile inspect(const QString& path);

} // namespace VoucherQueue
