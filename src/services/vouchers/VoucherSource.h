#pragma once

#include <QByteArray>
#include <QString>

/// A file that is to be archived, read once: everything that is said about it afterwards comes from
/// these bytes.
struct VoucherSource {
    QString fileName; // without the folder
    QString extension; // lower case, without the dot
    QByteArray content;
    QString sha256; // lower-case hexadecimal
    QString problem; // Chinese; why it cannot be archived, empty when it can

    /// Checks the file by name, type and size, reads it and computes its digest.
    [[nodiscard]] static VoucherSource read(const QString& path);
};
