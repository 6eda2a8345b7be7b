// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/WebAddress.h"

#include <QHostAddress>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace vellumo {

QString originOf(const QUrl &url)
{
    return url.toString(QUrl::RemoveUserInfo | QUrl::RemovePath | QUrl::RemoveQuery
                        | QUrl::RemoveFragment);
}

bool isLoopback(const QUrl &url)
{
    const QString host = url.host();
    return host == "localhost"_L1 || QHostAddress(host).isLoopback();
}

// A name may resolve to any address; only a numeric one is known to be private.
bool isPrivateAddress(const QString &host)
{
    constexpr std::array networks{"10.0.0.0/8"_L1,     "172.16.0.0/12"_L1, "192.168.0.0/16"_L1,
                                  "169.254.0.0/16"_L1, "fc00::/7"_L1,      "fe80::/10"_L1};
    const QHostAddress address(host);
    return std::ranges::any_of(networks, [&address](QLatin1StringView network) {
        return address.isInSubnet(QHostAddress::parseSubnet(network));
    });
}

std::optional<HttpError> refusalOf(const QUrl &url)
{
    const bool isPlain = url.scheme() == "http"_L1;
    if (!url.isValid() || url.host().isEmpty() || (!isPlain && url.scheme() != "https"_L1)) {
        return HttpError{HttpError::Kind::NoAddress, u"no web address"_s};
    }
    if (isPlain && !isLoopback(url) && !isPrivateAddress(url.host())) {
        return HttpError{HttpError::Kind::Insecure, u"http to a public host"_s};
    }
    return std::nullopt;
}

} // namespace vellumo
