// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Geometry.h"
#include <QList>
#include <QObject>
#include <optional>

namespace vellumo {

struct Screen {
    Rect frame;
    Rect visibleFrame; ///< without the areas that desktop panels reserve
    double topSafeAreaInset = 0; ///< height of a camera housing, 0 without one
    friend bool operator==(const Screen &, const Screen &) = default;
};

/// The screens, in the system's order. Main thread only.
class Screens : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] virtual QList<Screen> screens() const = 0;
    /// Absent while no screen is connected.
    [[nodiscard]] virtual std::optional<Screen> mainScreen() const = 0;
    /// Returns the position of the pointer in desktop coordinates.
    [[nodiscard]] virtual Point pointerLocation() const = 0;
    /// Returns a point on the screen where the user works: the pointer's, where it is known. May
    /// ask the desktop, for at most 100 ms.
    [[nodiscard]] virtual Point activeLocation() const { return pointerLocation(); }

Q_SIGNALS:
    /// Emitted when screens were added, removed or have changed their frames; once for changes that
    /// belong together.
    void changed();
};

} // namespace vellumo
