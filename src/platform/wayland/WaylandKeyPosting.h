// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/KeyPosting.h"

namespace vellumo {

class CopyKeys;
class FrontWindows;
class X11Workspace;

/// Sends the copy keys in a Wayland session: to windows of XWayland through the X server, to native
/// ones through the compositor.
class WaylandKeyPosting : public KeyPosting {
public:
    /// All must outlive this object; `keys` may be null. `x11Posting` is for the windows that
    /// `x11` sees, `native` sees the others.
    WaylandKeyPosting(KeyPosting &x11Posting, X11Workspace &x11, FrontWindows &native,
                      CopyKeys *keys);

    [[nodiscard]] bool canPostCopy(qint64 process) override;
    bool postCopy(qint64 process) override;

private:
    KeyPosting &x11Posting_;
    X11Workspace &x11_;
    FrontWindows &native_;
    CopyKeys *keys_;
};

} // namespace vellumo
