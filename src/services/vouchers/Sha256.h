#pragma once

#include <QByteArrayView>
#include <QString>

#include <memory>

using EVP_MD_CTX = struct evp_md_ctx_st;

/// SHA-256 of bytes that arrive piece by piece, computed by libcrypto, which uses the processor's
/// own instructions for it.
class Sha256 final {
public:
    Sha256();

    void add(QByteArrayView bytes);

    /// The digest of everything added, in lower-case hexadecimal; empty when libcrypto failed. Ends
    /// the computation.
    [[nodiscard]] QString hexDigest();

    /// The digest of bytes that are all there.
    [[nodiscard]] static QString hexDigestOf(QByteArrayView bytes);

private:
    std::unique_ptr<EVP_MD_CTX, void (*)(EVP_MD_CTX*)> m_context;
    bool m_ok = false;
};
