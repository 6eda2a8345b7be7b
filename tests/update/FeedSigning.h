// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <memory>

#include <openssl/evp.h>

namespace vellumo::test {

/// A maintainer with a fresh key pair.
class Maintainer {
public:
    [[nodiscard]] QByteArray publicKey() const
    {
        size_t size = 32;
        QByteArray raw(static_cast<qsizetype>(size), '\0');
        EVP_PKEY_get_raw_public_key(key_.get(), reinterpret_cast<unsigned char *>(raw.data()),
                                    &size);
        return raw.toBase64();
    }
    [[nodiscard]] QByteArray signature(const QByteArray &bytes) const
    {
        size_t size = 64;
        QByteArray raw(static_cast<qsizetype>(size), '\0');
        const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(),
                                                                              &EVP_MD_CTX_free);
        EVP_DigestSignInit(context.get(), nullptr, nullptr, nullptr, key_.get());
        EVP_DigestSign(context.get(), reinterpret_cast<unsigned char *>(raw.data()), &size,
                       reinterpret_cast<const unsigned char *>(bytes.constData()),
                       static_cast<size_t>(bytes.size()));
        return raw.toBase64();
    }
    [[nodiscard]] QByteArray signedFeed(const QByteArray &json) const
    {
        return "vellumo-signed-feed " + signature(json) + '\n' + json;
    }

private:
    std::unique_ptr<EVP_PKEY, decltype(&EVP_PKEY_free)> key_{
        EVP_PKEY_Q_keygen(nullptr, nullptr, "ED25519"), &EVP_PKEY_free};
};

inline const QByteArray sampleFeed =
    R"({"product": "app.vellumo.Vellumo", "format": 1, "version": "0.2.0~rc1-1",
        "date": "2026-11-20", "expires": "2027-05-31",
        "notes": {"en": "Two <b>news</b>.\nAnd more.", "zh": "两条新闻。"},
        "page": "https://vellumo.app/download?from=feed"})";

} // namespace vellumo::test
