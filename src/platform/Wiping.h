// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <cstring>

namespace vellumo {

/// Clears the text and overwrites its memory, unless another value shares it. Copies made by Qt or
/// the system are not reached.
template <typename Text> void wipe(Text &text)
{
    if (text.isDetached() && !text.isEmpty()) {
        ::explicit_bzero(text.data(),
                         static_cast<std::size_t>(text.size()) * sizeof(*text.constData()));
    }
    text.clear();
}

} // namespace vellumo
