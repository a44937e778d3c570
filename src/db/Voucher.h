#pragma once

#include "core/Codes.h"

#include <QDate>
#include <QString>

#include <optional>

/// The description of an archived voucher file.
struct Voucher {
    qint64 id = 0; // 0 until stored
    QString name;
    VoucherType voucherType = VoucherType::Other;
    QDate voucherDate;
    QString originalFileName;
    QString storedPath; // relative to the data directory
    QString fileExt; // lower case, without the dot
    qint64 fileSize = 0; // bytes
    QString sha256; // lower-case hexadecimal, of the file's content
    QString note;
    QString createdAt;
};

/// What a search of the archive asks for; unset parts do not restrict it.
struct VoucherFilter {
    enum class LinkState { All, Linked, Unlinked };

    std::optional<VoucherType> type;
    LinkState linkState = LinkState::All;
    qint64 projectId = 0; // linked to this project itself
    QString keyword; // in name, original file name or note; % and _ are wildcards
};
