// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/WindowSystem.h"

#include <QProcessEnvironment>

using namespace Qt::StringLiterals;

namespace vellumo {

bool isWaylandSession(const QProcessEnvironment &environment)
{
    return environment.value(u"XDG_SESSION_TYPE"_s) == "wayland"_L1
        || !environment.value(u"WAYLAND_DISPLAY"_s).isEmpty();
}

WindowSystem chooseWindowSystem(const QProcessEnvironment &environment,
                                const std::function<bool()> &offersLayers)
{
    const bool isWayland = isWaylandSession(environment);
    const QString chosen = environment.value(u"QT_QPA_PLATFORM"_s);
    if (!chosen.isEmpty() && !chosen.startsWith("wayland"_L1) && !chosen.startsWith("xcb"_L1)) {
        return {};
    }
    const bool hasLayers = isWayland && !chosen.startsWith("xcb"_L1) && offersLayers();
    if (environment.value(u"DISPLAY"_s).isEmpty() && !hasLayers) {
        return {false,
                {},
                false,
                isWayland
                    ? u"this Wayland session has no XWayland, which vellumo needs (DISPLAY is not "
                      "set)"_s
                    : u"no X display; start it in a desktop session (DISPLAY is not set)"_s};
    }
    WindowSystem system;
    // the plugin for Wayland may be missing
    system.platform = hasLayers ? "wayland;xcb" : "xcb";
    system.hasLayers = hasLayers;
    if (isWayland) {
        system.remark = u"a Wayland session; \"vellumo --doctor\" prints what works in it"_s;
    }
    return system;
}

} // namespace vellumo
