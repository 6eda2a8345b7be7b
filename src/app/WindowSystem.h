// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

class QProcessEnvironment;

namespace vellumo {

/// What the program can show its windows on.
struct WindowSystem {
    bool isUsable = true;
    QByteArray platform; ///< for QT_QPA_PLATFORM; empty to leave it
    bool hasLayers = false; ///< panels are layer surfaces
    QString remark; ///< for the user; empty when all is as usual
};

[[nodiscard]] bool isWaylandSession(const QProcessEnvironment &environment);

/// Windows are X11's, in a Wayland session XWayland's unless the compositor has a layer shell,
/// which `offersLayers` asks it. X11, or a Qt platform other than Wayland, is kept when the user
/// has chosen it.
[[nodiscard]] WindowSystem chooseWindowSystem(const QProcessEnvironment &environment,
                                              const std::function<bool()> &offersLayers);

} // namespace vellumo
