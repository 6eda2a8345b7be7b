// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vellumo {

/// Returns the id of the .desktop file in the path of a control group; empty when it has none.
/// Desktops name the systemd unit of an application after it:
/// https://systemd.io/DESKTOP_ENVIRONMENTS/
[[nodiscard]] QString applicationIdInUnits(const QString &controlGroup);

/// Returns the id of the .desktop file that the process was started from, by its sandbox or its
/// systemd unit; empty when neither names one. Reads files of /proc.
[[nodiscard]] QString startedApplicationId(qint64 processIdentifier);

/// Returns the file name of the process's program; empty when it cannot be read.
[[nodiscard]] QString programName(qint64 processIdentifier);

} // namespace vellumo
