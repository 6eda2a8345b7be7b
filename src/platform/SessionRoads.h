// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

namespace vellumo {

/// The ways in which this session lets the program show windows, see those of others, and read and
/// copy what is selected in them. For display only.
struct SessionRoads {
    enum class Windows : quint8 {
        X11,
        XWayland, ///< the program's windows in a Wayland session
        Layers, ///< layer surfaces and native windows
    };
    enum class Front : quint8 {
        None,
        X11,
        Sway,
        KWin,
        GnomeShell, ///< by the extension
        Accessibility,
    };
    enum class Selections : quint8 {
        X11,
        XWayland, ///< as far as it passes on those of native windows
        DataControl,
    };

    Windows windows = Windows::X11;
    Front front = Front::X11; ///< the source that knows the window in front now
    Selections selections = Selections::X11;
    bool copiesEverywhere = true; ///< otherwise in X11 windows only
};

} // namespace vellumo
