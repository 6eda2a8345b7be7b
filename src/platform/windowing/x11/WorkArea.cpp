// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/x11/WorkArea.h"

#include <algorithm>

namespace vellumo {

namespace {

constexpr quint32 maxPixel = 0xFFFF; // X coordinates have 16 bits

int pixel(quint32 number)
{
    return static_cast<int>(std::min(number, maxPixel));
}

/// Returns the part of `depth` that lies on a screen which begins `before` pixels behind the
/// desktop's edge and spans it from `first` to `last`.
int reserved(const Strut::Stretch &stretch, int before, int screenDepth, int first, int last)
{
    const bool lies = stretch.first <= last && stretch.last >= first;
    const int depth = lies ? stretch.depth - before : 0;
    return depth > 0 && depth <= screenDepth / 2 ? depth : 0;
}

} // namespace

Strut Strut::fromNumbers(const QList<quint32> &numbers)
{
    constexpr qsizetype whole = 4;
    constexpr qsizetype partial = 12;
    if (numbers.size() != whole && numbers.size() != partial) {
        return {};
    }
    const auto edge = [&numbers](qsizetype index) {
        return numbers.size() == whole
            ? Stretch{pixel(numbers[index]), 0, static_cast<int>(maxPixel)}
            : Stretch{pixel(numbers[index]), pixel(numbers[whole + (2 * index)]),
                      pixel(numbers[whole + (2 * index) + 1])};
    };
    return {edge(0), edge(1), edge(2), edge(3)};
}

QMargins reservedMargins(const QRect &screen, QSize desktop, const QList<Strut> &struts)
{
    QMargins margins;
    for (const Strut &strut : struts) {
        const QMargins own(
            reserved(strut.left, screen.left(), screen.width(), screen.top(), screen.bottom()),
            reserved(strut.top, screen.top(), screen.height(), screen.left(), screen.right()),
            reserved(strut.right, desktop.width() - 1 - screen.right(), screen.width(),
                     screen.top(), screen.bottom()),
            reserved(strut.bottom, desktop.height() - 1 - screen.bottom(), screen.height(),
                     screen.left(), screen.right()));
        margins = margins | own;
    }
    return margins;
}

} // namespace vellumo
