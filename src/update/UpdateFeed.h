// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Result.h"
#include "update/DebianVersion.h"
#include <QByteArray>
#include <QDate>
#include <QString>
#include <QUrl>

namespace vellumo {

class Ed25519PublicKey;
class SignatureCheck;

enum class FeedFault : quint8 {
    Unverifiable, ///< the module that checks signatures is missing
    Unsigned, ///< not in the signed form, or signed with an unknown key
    Foreign, ///< signed, but for another program
    Malformed, ///< signed, but not a valid feed
    Expired, ///< signed, but expired
};

/// The newest release, as announced by the feed. docs/updates.md describes the format.
struct UpdateFeed {
    DebianVersion version;
    QDate date;
    QString englishNotes; ///< plain text
    QString chineseNotes; ///< plain text
    QUrl page; ///< page of the release; https

    /// Maximum size of a feed in bytes.
    static constexpr qsizetype maxSize = 65536;

    /// Verifies and parses a feed. Nothing after the signature is parsed unless the signature is
    /// valid. `today` is the date in UTC.
    [[nodiscard]] static Result<UpdateFeed, FeedFault> fromSigned(QByteArrayView document,
                                                                  const Ed25519PublicKey &key,
                                                                  const SignatureCheck &check,
                                                                  QDate today);
};

} // namespace vellumo
