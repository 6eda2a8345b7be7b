// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QString>

namespace vellumo {

class Ed25519PublicKey;

/// Checks signatures with a module of the program's own, which is loaded for the first check and
/// brings the cryptographic library along: most runs never need either.
class SignatureCheck {
public:
    enum class Verdict : quint8 {
        Good,
        Bad, ///< any fault of the library included
        Impossible, ///< the module cannot be loaded
    };

    /// `module` is the file's full name.
    explicit SignatureCheck(QString module) : module_(std::move(module)) { }

    /// Whether the signature was made over exactly this message with the secret half of the key.
    [[nodiscard]] Verdict verify(const Ed25519PublicKey &key, QByteArrayView message,
                                 QByteArrayView signature) const;

private:
    QString module_;
};

} // namespace vellumo
