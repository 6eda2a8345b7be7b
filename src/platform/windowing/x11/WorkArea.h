// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QMargins>
#include <QRect>

namespace vellumo {

/// The areas that one window reserves at the edges of the whole desktop, each with its stretch of
/// the edge (first and last pixel). In pixels of the X server.
struct Strut {
    struct Stretch {
        int depth = 0; ///< 0: nothing is reserved
        int first = 0;
        int last = 0;
    };
    Stretch left; ///< stretches along y
    Stretch right;
    Stretch top; ///< stretches along x
    Stretch bottom;

    /// Parses the twelve numbers of _NET_WM_STRUT_PARTIAL or the four of _NET_WM_STRUT, which
    /// reserve whole edges. A list of another length reserves nothing.
    [[nodiscard]] static Strut fromNumbers(const QList<quint32> &numbers);
};

/// Returns how much of `screen` is reserved at each of its edges, on a desktop of this size. A
/// strut of more than half of the screen is ignored: it belongs to a neighbouring screen.
[[nodiscard]] QMargins reservedMargins(const QRect &screen, QSize desktop,
                                       const QList<Strut> &struts);

} // namespace vellumo
