// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

namespace vellumo::test {

/// An ID token of the form that the token service gives: head, claims and signature. Two tokens
/// differ by their signature, which signs nothing. Without an address the account has none.
inline QString idToken(const QString &uid, const QString &email, const QString &signature)
{
    using namespace Qt::StringLiterals;
    const auto part = [](const QJsonObject &object) {
        return QString::fromLatin1(
            QJsonDocument(object)
                .toJson(QJsonDocument::Compact)
                .toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals));
    };
    QJsonObject claims{{u"aud"_s, u"stand-in"_s}, {u"sub"_s, uid}, {u"user_id"_s, uid}};
    if (!email.isEmpty())
        claims.insert(u"email"_s, email);
    return part({{u"alg"_s, u"RS256"_s}, {u"typ"_s, u"JWT"_s}}) + u'.' + part(claims) + u'.'
        + signature;
}

} // namespace vellumo::test
