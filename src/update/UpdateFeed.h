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
    Unverifiable, ///< a part of this installation that checks signatures is missing
    Unsigned, ///< not of the signed form, or signed with an unknown key
    Foreign, ///< signed, but not for this program
    Malformed, ///< signed, but not what a feed is
    Expired, ///< signed, but too old to be believed
};

/// The newest release, as its maintainers announce it. docs/updates.md describes the form.
struct UpdateFeed {
    DebianVersion version;
    QDate date;
    QString englishNotes; ///< plain text
    QString chineseNotes; ///< plain text
    QUrl page; ///< where the release can be had; https

    /// More than this is no feed, in bytes.
    static constexpr qsizetype longest = 65536;

    /// Reads what a feed's address answered. Nothing beyond the signature is looked at unless the
    /// signature is the key's. `today` is the date in UTC.
    [[nodiscard]] static Result<UpdateFeed, FeedFault> fromSigned(QByteArrayView document,
                                                                  const Ed25519PublicKey &key,
                                                                  const SignatureCheck &check,
                                                                  QDate today);
};

} // namespace vellumo
