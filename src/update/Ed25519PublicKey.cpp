// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "update/Ed25519PublicKey.h"

#include <utility>

namespace vellumo {

std::optional<QByteArray> strictBase64(QByteArrayView text, qsizetype size)
{
    const QByteArray written = text.toByteArray();
    const QByteArray decoded = QByteArray::fromBase64(written);
    if (decoded.size() != size || decoded.toBase64() != written) {
        return std::nullopt;
    }
    return decoded;
}

std::optional<Ed25519PublicKey> Ed25519PublicKey::fromBase64(QByteArrayView key)
{
    auto bytes = strictBase64(key, size);
    if (!bytes) {
        return std::nullopt;
    }
    return Ed25519PublicKey(std::move(*bytes));
}

} // namespace vellumo
