// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "update/SignatureCheck.h"

#include "update/Ed25519PublicKey.h"
#include "update/signature/Ed25519Module.h"

#include <QLibrary>

namespace vellumo {

namespace {

const unsigned char *bytes(QByteArrayView view)
{
    return reinterpret_cast<const unsigned char *>(view.data());
}

} // namespace

SignatureCheck::Verdict SignatureCheck::verify(const Ed25519PublicKey &key, QByteArrayView message,
                                               QByteArrayView signature) const
{
    if (signature.size() != Ed25519PublicKey::signatureSize) {
        return Verdict::Bad;
    }
    // QLibrary keeps it loaded and returns it at later calls
    const auto check = reinterpret_cast<ed25519Module::Verify>(
        QLibrary::resolve(module_, ed25519Module::function));
    if (check == nullptr) {
        return Verdict::Impossible;
    }
    const bool isGood = check(bytes(key.bytes()), bytes(signature), bytes(message),
                              static_cast<size_t>(message.size()))
        == 1;
    return isGood ? Verdict::Good : Verdict::Bad;
}

} // namespace vellumo
