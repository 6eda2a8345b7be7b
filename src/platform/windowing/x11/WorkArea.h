// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QMargins>
#include <QRect>

namespace vellumo {

/// What one window reserves along the edges of the whole desktop, and over which stretch of each
/// edge (first and last pixel). In pixels of the X server.
struct Strut {
    struct Stretch {
        int depth = 0; ///< 0: nothing
        int first = 0;
        int last = 0;
    };
    Stretch left; ///< stretches along y
    Stretch right;
    Stretch top; ///< stretches along x
    Stretch bottom;

    /// From the twelve numbers of _NET_WM_STRUT_PARTIAL or the four of _NET_WM_STRUT, which reserve
    /// whole edges; a list of another length reserves nothing.
    [[nodiscard]] static Strut fromNumbers(const QList<quint32> &numbers);
};

/// How much of `screen` is reserved at each of its edges, on a desktop of this size. What would
/// take more than half of the screen is meant for another one beside it.
[[nodiscard]] QMargins reservedMargins(const QRect &screen, QSize desktop,
                                       const QList<Strut> &struts);

} // namespace vellumo
