// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QRect>
#include <QString>

namespace vellumo::test {

/// One element as a screen reader sees it.
struct AccessibleItem {
    QString name;
    QString role; ///< such as "text", "label" or "button"
    QRect extents; ///< on the screen
};

/// Returns the elements of a process that show on the screen, parents first. Empty without an
/// accessibility bus.
QList<AccessibleItem> accessibleItems(qint64 processIdentifier);

} // namespace vellumo::test
