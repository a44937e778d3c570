#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringConverter>
#include <QStringView>

/// The bytes of a CSV file, built in place: UTF-8 behind a byte order mark (without it spreadsheet
/// programs take Chinese texts for another encoding), fields apart by commas, every line ended by
/// CR LF. A field with a comma, a quote or a line break is put in quotes and its own are doubled.
class CsvBytes final {
public:
    /// `expectedSize` in bytes saves moving what is there when the file grows.
    explicit CsvBytes(qsizetype expectedSize = 0);

    CsvBytes& field(QStringView text);
    CsvBytes& field(qint64 number);
    /// A field that is UTF-8 already.
    CsvBytes& utf8Field(QByteArrayView text);
    /// A field that is put together from texts with a separator between them.
    CsvBytes& joinedField(const QList<QString>& texts, QStringView separator);
    void endLine();

    const QByteArray& bytes() const { return m_bytes; }

private:
    void beginField();
    void append(QStringView text);
    void quoteSince(qsizetype begin);

    QByteArray m_bytes;
    QStringEncoder m_toUtf8;
    bool m_lineStarted = false;
};
