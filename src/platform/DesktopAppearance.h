// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <optional>

namespace vellumo {

/// The desktop's appearance settings beyond the application's palette and font. Main thread only.
class DesktopAppearance : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Absent while the desktop has no preference or has not answered yet.
    [[nodiscard]] virtual std::optional<bool> isDark() const = 0;

    [[nodiscard]] virtual bool isMotionReduced() const = 0;

Q_SIGNALS:
    void changed();
};

} // namespace vellumo
