// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/KeyPosting.h"
#include <xcb/xcb.h>

namespace vellumo {

class X11Connection;
class X11EventMonitors;
class X11Problems;
class X11Windows;

/// Sends Control+Insert through the XTEST extension. It copies in every toolkit and keyboard
/// layout, whereas Control+C interrupts programs in terminals and needs a Latin layout.
class X11KeyPosting : public KeyPosting {
public:
    /// All must outlive this object; `connection` is the one of the monitors.
    X11KeyPosting(X11Connection &connection, X11EventMonitors &monitors, X11Windows &windows,
                  X11Problems &problems);

    [[nodiscard]] bool canPostCopy(qint64 process) override;
    bool postCopy(qint64 process) override;

private:
    [[nodiscard]] bool mayReceiveKeys(xcb_window_t window, qint64 process);

    X11Connection &connection_;
    X11EventMonitors &monitors_;
    X11Windows &windows_;
    bool hasTest_ = false;
};

} // namespace vellumo
