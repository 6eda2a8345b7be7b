// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QRect>
#include <QString>

namespace vellumo::test {

/// One element as a screen reader meets it.
struct AccessibleItem {
    QString name;
    QString role; ///< such as "text", "label" or "button"
    QRect extents; ///< on the screen
};

/// The elements of a process that are showing on the screen, parents first; none without an
/// accessibility bus.
QList<AccessibleItem> accessibleItems(qint64 processIdentifier);

} // namespace vellumo::test
