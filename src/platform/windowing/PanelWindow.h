// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FloatingWindows.h"
#include <memory>
#include <qwindowdefs.h>

class QQmlEngine;
class QQuickItem;
class QQuickWindow;

namespace vellumo {

/// A native window, created and hidden, that can hold a panel of this style.
[[nodiscard]] std::unique_ptr<QQuickWindow> makePanelWindow(const FloatingPanelStyle &style);

/// Makes the content inside the window, which owns it. Null, after a diagnostic line, when its
/// component cannot be made.
QQuickItem *makePanelContent(QQmlEngine &engine, const FloatingPanelContent &content,
                             QQuickWindow &window);

/// Keeps a panel above a full-screen window, beneath which some window managers would put it.
class FullScreenLift {
public:
    /// Ties the mapped panel to a full-screen window that has the keyboard, and unties it from one
    /// that is so no more. `active` is the active window of the desktop; 0 for none.
    void apply(QQuickWindow &panel, WindowLevel level, WId active);
    void undo(QQuickWindow &panel);

private:
    bool isLifted_ = false;
};

} // namespace vellumo
