// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/HttpSession.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vellumo {

QByteArray HttpResponse::header(const QByteArray &name) const
{
    const auto found = std::find_if(headers.begin(), headers.end(), [&name](const auto &header) {
        return header.first.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found != headers.end() ? found->second : QByteArray();
}

QString describe(HttpError::Kind kind)
{
    switch (kind) {
    case HttpError::Kind::timedOut:
        return u"timed out"_s;
    case HttpError::Kind::cannotResolve:
        return u"name cannot be resolved"_s;
    case HttpError::Kind::refused:
        return u"connection refused"_s;
    case HttpError::Kind::untrusted:
        return u"no trusted TLS connection"_s;
    case HttpError::Kind::cutShort:
        return u"answer cut short"_s;
    case HttpError::Kind::tooLarge:
        return u"answer too large"_s;
    case HttpError::Kind::insecure:
        return u"not sent, the address must begin with https"_s;
    case HttpError::Kind::noAddress:
        return u"not sent, the address is no web address"_s;
    case HttpError::Kind::unsendable:
        return u"not sent, the key is malformed"_s;
    case HttpError::Kind::cancelled:
        return u"cancelled"_s;
    case HttpError::Kind::other:
        return u"network error"_s;
    }
    Q_UNREACHABLE();
}

} // namespace vellumo
