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

/// Creates a hidden native window for a panel of this style, which becomes a layer surface or a
/// window of the window manager.
[[nodiscard]] std::unique_ptr<QQuickWindow> makePanelWindow(const FloatingPanelStyle &style,
                                                            bool isLayer);

/// Creates the content inside the window, which owns it. Returns null, after a diagnostic line,
/// when the component cannot be created.
QQuickItem *makePanelContent(QQmlEngine &engine, const FloatingPanelContent &content,
                             QQuickWindow &window);

/// Keeps a panel above a full-screen window, below which some window managers would stack it.
class FullScreenLift {
public:
    /// Makes the mapped panel transient for the active window if that is full-screen, and undoes it
    /// otherwise. `active` is the desktop's active window; 0 for none.
    void apply(QQuickWindow &panel, WindowLevel level, WId active);
    void undo(QQuickWindow &panel);

private:
    bool isLifted_ = false;
};

} // namespace vellumo
