// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <cstring>

namespace vellumo {

/// Empties the text, and overwrites what it held unless another value shares it. Copies that Qt or
/// the system have made on the way are not reached.
template <typename Text> void wipe(Text &text)
{
    if (text.isDetached() && !text.isEmpty()) {
        ::explicit_bzero(text.data(),
                         static_cast<std::size_t>(text.size()) * sizeof(*text.constData()));
    }
    text.clear();
}

} // namespace vellumo
