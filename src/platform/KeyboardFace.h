// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace vellumo {

/// What is printed on the keys that a drawing of the keyboard shows.
struct KeyboardFace {
    /// The eight keys right of the left Shift key, in the user's current layout.
    QStringList letters{QStringLiteral("Z"), QStringLiteral("X"), QStringLiteral("C"),
                        QStringLiteral("V"), QStringLiteral("B"), QStringLiteral("N"),
                        QStringLiteral("M"), QStringLiteral(",")};
    /// Whether the key right of the space bar is Option, too. Otherwise it is AltGr.
    bool hasRightOption = true;
};

} // namespace vellumo
