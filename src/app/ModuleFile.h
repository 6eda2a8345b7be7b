// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vellumo {

/// Returns the path of one of the program's own modules, which are loaded on first use.
/// Needs the application object.
[[nodiscard]] QString moduleFile(const QString &name);

} // namespace vellumo
