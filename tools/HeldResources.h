// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What a process holds at the moment, of the kernel and of the X server.
struct HeldResources {
    double residentMegabytes = 0;
    double privateDirtyMegabytes = 0;
    qsizetype threads = 0;
    qsizetype fileDescriptors = 0;
    qsizetype xResources = 0; ///< of all its connections to the server
    double xPixmapMegabytes = 0;
};

/// Opens a connection to the server for each call. Zeros for what cannot be found out.
[[nodiscard]] HeldResources heldResources(qint64 process);
