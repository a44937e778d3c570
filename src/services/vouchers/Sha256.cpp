#include "services/vouchers/Sha256.h"

#include <QByteArray>

#include <openssl/evp.h>

Sha256::Sha256()
    : m_context(EVP_MD_CTX_new(), &EVP_MD_CTX_free)
    , m_ok(m_context && EVP_DigestInit_ex(m_context.get(), EVP_sha256(), nullptr) == 1)
{
}

void Sha256::add(QByteArrayView bytes)
{
    m_ok = m_ok
        && EVP_DigestUpdate(m_context.get(), bytes.data(), static_cast<std::size_t>(bytes.size()))
            == 1;
}

QString Sha256::hexDigest()
{
    constexpr qsizetype digestLength = 32;
    QByteArray digest(digestLength, '\0');
    m_ok = m_ok
        && EVP_DigestFinal_ex(
               m_context.get(), reinterpret_cast<unsigned char*>(digest.data()), nullptr)
            == 1;
    const QString text = m_ok ? QString::fromLatin1(digest.toHex()) : QString();
    m_ok = false;
    return text;
}

QString Sha256::hexDigestOf(QByteArrayView bytes)
{
    Sha256 digest;
    digest.add(bytes);
    return digest.hexDigest();
}
