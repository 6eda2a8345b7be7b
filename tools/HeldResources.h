// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// Resources that a process holds, of the kernel and of the X server.
struct HeldResources {
    double residentMegabytes = 0;
    double privateDirtyMegabytes = 0;
    qsizetype threads = 0;
    qsizetype fileDescriptors = 0;
    qsizetype xResources = 0; ///< all its connections to the server together
    double xPixmapMegabytes = 0;
};

/// Returns the current resources. Opens a connection to the server for each call. Values that
/// cannot be determined are 0.
[[nodiscard]] HeldResources heldResources(qint64 process);
