// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>

class QQuickItem;
class QQuickWindow;

namespace vellumo {

/// Returns whether the item, or one inside it, shows text at this position that can be edited or
/// selected. The position is in the item's coordinates.
[[nodiscard]] bool hasSelectableText(const QQuickItem &item, QPointF position);

/// Returns whether the field of the window that has the keyboard contains text.
[[nodiscard]] bool hasTypedText(const QQuickWindow &window);

} // namespace vellumo
