// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/KeyboardFace.h"
#include "platform/x11/OptionKeys.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11EventMonitors.h"
#include "platform/x11/X11KeyPosting.h"
#include "platform/x11/X11Pasteboard.h"
#include "platform/x11/X11PrimarySelection.h"
#include "platform/x11/X11Problems.h"
#include "platform/x11/X11SelectionHistory.h"
#include "platform/x11/X11Windows.h"
#include "platform/x11/X11Workspace.h"

namespace vellumo {

/// Builds and owns the classes of this folder, on four connections: input, windows, clipboard, and
/// the history of PRIMARY. Prints one line about what the server lacks. Needs the application
/// object and must be destroyed before it.
class X11Backend {
public:
    /// An empty display means the one that the environment names.
    explicit X11Backend(const QByteArray &display = {});

    [[nodiscard]] X11EventMonitors &eventMonitoring() { return eventMonitors_; }
    [[nodiscard]] X11Workspace &workspace() { return workspace_; }
    [[nodiscard]] X11Pasteboard &pasteboard() { return pasteboard_; }
    [[nodiscard]] X11PrimarySelection &primarySelection() { return primarySelection_; }
    [[nodiscard]] X11KeyPosting &keyPosting() { return keyPosting_; }
    [[nodiscard]] X11Windows &windows() { return windows_; }
    [[nodiscard]] OptionKeys optionKeys() { return OptionKeys::read(inputConnection_); }
    [[nodiscard]] KeyboardFace keyboardFace();

private:
    X11Problems problems_;
    X11Connection inputConnection_;
    X11Connection windowConnection_;
    X11Connection clipboardConnection_;
    X11Connection selectionConnection_;
    X11Windows windows_;
    X11EventMonitors eventMonitors_;
    X11KeyPosting keyPosting_;
    X11Workspace workspace_;
    X11Pasteboard pasteboard_;
    X11SelectionHistory selectionHistory_;
    X11PrimarySelection primarySelection_;
};

} // namespace vellumo
