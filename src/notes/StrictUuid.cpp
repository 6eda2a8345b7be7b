// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/StrictUuid.h"

#include <QByteArrayView>

namespace vellumo {

std::optional<QUuid> strictUuid(std::string_view text)
{
    if (text.size() != 36) {
        return std::nullopt;
    }
    for (size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        const bool wantsHyphen = i == 8 || i == 13 || i == 18 || i == 23;
        if (wantsHyphen ? c != '-' : std::isxdigit(c) == 0) {
            return std::nullopt;
        }
    }
    return QUuid::fromString(QLatin1StringView(text.data(), static_cast<qsizetype>(text.size())));
}

} // namespace vellumo
