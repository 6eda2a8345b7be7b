// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/qt/RequestRules.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

bool hasControlCharacter(const QByteArray &text)
{
    return std::ranges::any_of(text, [](char c) {
        constexpr char deleteCharacter = 0x7f;
        return (c >= 0 && c < ' ') || c == deleteCharacter;
    });
}

} // namespace

std::optional<HttpError> refusalOf(const HttpRequest &request)
{
    const bool isSound = std::ranges::none_of(request.headers, [](const auto &header) {
        return hasControlCharacter(header.first) || hasControlCharacter(header.second);
    });
    if (!isSound) {
        return HttpError{HttpError::Kind::Unsendable, u"control character in a header"_s};
    }
    return refusalOf(request.url);
}

} // namespace vellumo
