// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <chrono>
#include <optional>

namespace vellumo {

/// The window of another process that has the keyboard, or had it last.
struct FrontWindow {
    qint64 processIdentifier = 0;
    QString applicationId; ///< its .desktop id without the suffix; empty when not reported
    QString applicationName; ///< the application's own name for itself; empty when not reported
    /// When it came to the front; when it is not active any more, when it lost the keyboard.
    std::chrono::steady_clock::time_point since;
    bool isActive = true; ///< false: no reported window has the keyboard now
    bool isOfCompositor = false; ///< reported by the compositor, which sees all windows
    bool isBehindOwn =
        false; ///< known to the compositor: a window of this process has the keyboard
};

/// Reports the window in front where the X server does not know it. Applications that the source
/// cannot see are not reported: while one of them is in front, no window is active. Main thread
/// only.
class FrontWindows : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Returns the last window that was in front; absent before the first.
    [[nodiscard]] virtual std::optional<FrontWindow> frontWindow() = 0;

    /// Returns the title of the window in front; absent if it does not belong to the process.
    [[nodiscard]] virtual std::optional<QString> windowTitle(qint64 processIdentifier) = 0;

Q_SIGNALS:
    /// Emitted when another window comes to the front, and when none is active any more.
    void changed();
};

} // namespace vellumo
