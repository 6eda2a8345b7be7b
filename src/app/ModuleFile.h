// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vellumo {

/// Name of the module that is a Wayland client.
inline const QString waylandClientFile = QStringLiteral("waylandclient.so");

/// Returns the path of one of the program's own modules, which are loaded on first use.
[[nodiscard]] QString moduleFile(const QString &name);

} // namespace vellumo
