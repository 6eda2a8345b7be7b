// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <optional>

namespace vellumo {

/// The public half of a key pair that signs. SignatureCheck checks signatures with it.
class Ed25519PublicKey {
public:
    static constexpr qsizetype size = 32; ///< of a key, in bytes
    static constexpr qsizetype signatureSize = 64;

    /// `key` is the base64 of the key's bytes; absent for anything else.
    [[nodiscard]] static std::optional<Ed25519PublicKey> fromBase64(QByteArrayView key);

    [[nodiscard]] const QByteArray &bytes() const { return bytes_; }

private:
    explicit Ed25519PublicKey(QByteArray bytes) : bytes_(std::move(bytes)) { }

    QByteArray bytes_;
};

/// Decodes base64 that is written in the one proper way and gives exactly `size` bytes.
[[nodiscard]] std::optional<QByteArray> strictBase64(QByteArrayView text, qsizetype size);

} // namespace vellumo
