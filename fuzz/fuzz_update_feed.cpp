// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Contents of a feed with a valid signature.

#include "Fuzzing.h"
#include "update/Ed25519PublicKey.h"
#include "update/SignatureCheck.h"
#include "update/UpdateFeed.h"

using namespace vellumo;
using namespace vellumo::fuzzing;

/// Replaces the real check, so that the code behind it is reached.
SignatureCheck::Verdict SignatureCheck::verify(const Ed25519PublicKey & /*key*/,
                                               QByteArrayView /*message*/,
                                               QByteArrayView /*signature*/) const
{
    return Verdict::Good;
}

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const auto key = Ed25519PublicKey::fromBase64(QByteArray(32, 'k').toBase64());
    const SignatureCheck check{{}};
    const QByteArray plain = bytes(data, size);
    const QByteArray signedForm = "vellumo-signed-feed "
        + QByteArray(Ed25519PublicKey::signatureSize, 's').toBase64() + '\n' + plain;
    for (const QByteArray &document : {plain, signedForm}) {
        const auto feed = UpdateFeed::fromSigned(document, *key, check, QDate(2026, 11, 22));
        if (feed.isOk()) {
            require(feed.value().page.scheme() == QLatin1String("https"), "a page is secure");
            require(feed.value().date.isValid(), "a release has a date");
        }
    }
    return 0;
}
