// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/TextOffsets.h"

#include <algorithm>

namespace vellumo {

ObjectOffsets objectOffsets(const QString &text)
{
    ObjectOffsets found;
    for (const QChar unit : text) {
        if (unit == objectReplacement) {
            found.offsets.append(found.length);
        }
        if (!unit.isLowSurrogate()) {
            ++found.length;
        }
    }
    return found;
}

bool isBeforeAstral(const OffsetRange &range, const QString &text)
{
    const auto isSurrogate = [](QChar unit) { return unit.isSurrogate(); };
    const auto astral = std::find_if(text.begin(), text.end(), isSurrogate) - text.begin();
    return astral == text.size() || (range.start < range.end && range.end < astral);
}

} // namespace vellumo
