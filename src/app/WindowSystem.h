// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

class QProcessEnvironment;

namespace vellumo {

/// What the program can show its windows on.
struct WindowSystem {
    bool isUsable = true;
    QByteArray platform; ///< for QT_QPA_PLATFORM; empty to leave it
    QString remark; ///< for the user; empty when all is as usual
};

[[nodiscard]] bool isWaylandSession(const QProcessEnvironment &environment);

/// Windows are placed and taps are seen through X11, on a Wayland session through XWayland. A Qt
/// platform other than Wayland that the user has chosen is kept.
[[nodiscard]] WindowSystem chooseWindowSystem(const QProcessEnvironment &environment);

} // namespace vellumo
