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
    case HttpError::Kind::TimedOut:
        return u"timed out"_s;
    case HttpError::Kind::CannotResolve:
        return u"name cannot be resolved"_s;
    case HttpError::Kind::Refused:
        return u"connection refused"_s;
    case HttpError::Kind::Untrusted:
        return u"no trusted TLS connection"_s;
    case HttpError::Kind::CutShort:
        return u"answer cut short"_s;
    case HttpError::Kind::TooLarge:
        return u"answer too large"_s;
    case HttpError::Kind::Insecure:
        return u"not sent, the address must begin with https"_s;
    case HttpError::Kind::NoAddress:
        return u"not sent, the address is no web address"_s;
    case HttpError::Kind::Unsendable:
        return u"not sent, the key is malformed"_s;
    case HttpError::Kind::Cancelled:
        return u"cancelled"_s;
    case HttpError::Kind::Other:
        return u"network error"_s;
    }
    Q_UNREACHABLE();
}

} // namespace vellumo
