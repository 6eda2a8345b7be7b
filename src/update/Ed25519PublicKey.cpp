// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "update/Ed25519PublicKey.h"

#include <QByteArray>

#include <openssl/evp.h>

namespace vellumo {

namespace {

const unsigned char *bytes(QByteArrayView view)
{
    return reinterpret_cast<const unsigned char *>(view.data());
}

} // namespace

std::optional<QByteArray> strictBase64(QByteArrayView text, qsizetype size)
{
    const QByteArray written = text.toByteArray();
    const QByteArray decoded = QByteArray::fromBase64(written);
    if (decoded.size() != size || decoded.toBase64() != written) {
        return std::nullopt;
    }
    return decoded;
}

void Ed25519PublicKey::Release::operator()(evp_pkey_st *key) const
{
    EVP_PKEY_free(key);
}

std::optional<Ed25519PublicKey> Ed25519PublicKey::fromBase64(QByteArrayView key)
{
    const auto raw = strictBase64(key, size);
    if (!raw) {
        return std::nullopt;
    }
    Handle handle(EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, bytes(*raw), size));
    if (!handle) {
        return std::nullopt;
    }
    return Ed25519PublicKey(std::move(handle));
}

bool Ed25519PublicKey::verifies(QByteArrayView message, QByteArrayView signature) const
{
    if (signature.size() != signatureSize) {
        return false;
    }
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(),
                                                                          &EVP_MD_CTX_free);
    return context
        && EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, handle_.get()) == 1
        && EVP_DigestVerify(context.get(), bytes(signature), static_cast<size_t>(signature.size()),
                            bytes(message), static_cast<size_t>(message.size()))
        == 1;
}

} // namespace vellumo
