#include "services/csv/CsvBytes.h"

#include <algorithm>
#include <array>
#include <charconv>

CsvBytes::CsvBytes(qsizetype expectedSize)
    // Stateless: half a character at the end of a field must not wait for the next one.
    : m_toUtf8(QStringConverter::Utf8, QStringConverter::Flag::Stateless)
{
    m_bytes.reserve(expectedSize);
    m_bytes.append("\xEF\xBB\xBF");
}

CsvBytes& CsvBytes::field(QStringView text)
{
    beginField();
    const qsizetype begin = m_bytes.size();
    append(text);
    quoteSince(begin);
    return *this;
}

CsvBytes& CsvBytes::field(qint64 number)
{
    beginField();
    std::array<char, 20> digits;
    const auto* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    m_bytes.append(digits.data(), end - digits.data());
    return *this;
}

CsvBytes& CsvBytes::utf8Field(QByteArrayView text)
{
    beginField();
    const qsizetype begin = m_bytes.size();
    m_bytes.append(text);
    quoteSince(begin);
    return *this;
}

CsvBytes& CsvBytes::joinedField(const QList<QString>& texts, QStringView separator)
{
    beginField();
    const qsizetype begin = m_bytes.size();
    for (qsizetype i = 0; i < texts.size(); ++i) {
        if (i > 0)
            append(separator);
        append(texts.at(i));
    }
    quoteSince(begin);
    return *this;
}

void CsvBytes::endLine()
{
    m_bytes.append("\r\n");
    m_lineStarted = false;
}

void CsvBytes::beginField()
{
    if (m_lineStarted)
        m_bytes.append(',');
    m_lineStarted = true;
}

void CsvBytes::append(QStringView text)
{
    const qsizetype begin = m_bytes.size();
    m_bytes.resize(begin + m_toUtf8.requiredSpace(text.size()));
    const char* end = m_toUtf8.appendToBuffer(m_bytes.data() + begin, text);
    m_bytes.resize(end - m_bytes.constData());
}

// In UTF-8 the bytes of these four stand for nothing else.
void CsvBytes::quoteSince(qsizetype begin)
{
    const QByteArrayView text = QByteArrayView(m_bytes).sliced(begin);
    const auto isSpecial = [](char c) {
        // Almost every byte is passed by with the first comparison.
        return static_cast<unsigned char>(c) <= ','
            && (c == ',' || c == '"' || c == '\n' || c == '\r');
    };
    if (std::none_of(text.begin(), text.end(), isSpecial))
        return;
    QByteArray quoted = text.toByteArray();
    quoted.replace('"', QByteArrayView("\"\""));
    m_bytes.truncate(begin);
    m_bytes.append('"').append(quoted).append('"');
}
