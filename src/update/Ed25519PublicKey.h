// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <optional>

namespace vellumo {

/// A public key for SignatureCheck.
class Ed25519PublicKey {
public:
    static constexpr qsizetype size = 32; ///< bytes of a key
    static constexpr qsizetype signatureSize = 64;

    /// Decodes the base64 of the key's bytes; absent for anything else.
    [[nodiscard]] static std::optional<Ed25519PublicKey> fromBase64(QByteArrayView key);

    [[nodiscard]] const QByteArray &bytes() const { return bytes_; }

private:
    explicit Ed25519PublicKey(QByteArray bytes) : bytes_(std::move(bytes)) { }

    QByteArray bytes_;
};

/// Decodes canonical base64 of exactly `size` bytes; absent for anything else.
[[nodiscard]] std::optional<QByteArray> strictBase64(QByteArrayView text, qsizetype size);

} // namespace vellumo
