// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <memory>
#include <optional>

struct evp_pkey_st;

namespace vellumo {

/// Checks signatures made with the secret half of this key.
class Ed25519PublicKey {
public:
    static constexpr qsizetype size = 32; ///< of a key, in bytes
    static constexpr qsizetype signatureSize = 64;

    /// `key` is the base64 of the key's bytes; absent for anything else.
    [[nodiscard]] static std::optional<Ed25519PublicKey> fromBase64(QByteArrayView key);

    /// Whether the signature was made over exactly this message. Any fault, also one of the
    /// library's, is a no.
    [[nodiscard]] bool verifies(QByteArrayView message, QByteArrayView signature) const;

private:
    struct Release {
        void operator()(evp_pkey_st *key) const;
    };
    using Handle = std::unique_ptr<evp_pkey_st, Release>;

    explicit Ed25519PublicKey(Handle handle) : handle_(std::move(handle)) { }

    Handle handle_;
};

/// Decodes base64 that is written in the one proper way and gives exactly `size` bytes.
[[nodiscard]] std::optional<QByteArray> strictBase64(QByteArrayView text, qsizetype size);

} // namespace vellumo
