// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>
#include <QString>

namespace vellumo {

class Ed25519PublicKey;

/// Checks signatures with a module that is loaded for the first check together with the
/// cryptographic library, since most runs need neither.
class SignatureCheck {
public:
    enum class Verdict : quint8 {
        Good,
        Bad, ///< including any error of the library
        Impossible, ///< the module cannot be loaded
    };

    /// `module` is the path of the module.
    explicit SignatureCheck(QString module) : module_(std::move(module)) { }

    /// Verifies that the signature was made over exactly this message with the secret key.
    [[nodiscard]] Verdict verify(const Ed25519PublicKey &key, QByteArrayView message,
                                 QByteArrayView signature) const;

private:
    QString module_;
};

} // namespace vellumo
