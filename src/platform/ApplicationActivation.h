// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace vellumo {

/// Reports when a click on one of our windows brings all of them to the front, on desktops that
/// raise an application's windows together. Emits nothing where only the clicked window is raised,
/// as under X11. Main thread only.
class ApplicationActivation : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    /// Emitted before the windows come to the front.
    void willBecomeActive();
    void didBecomeActive();
};

} // namespace vellumo
