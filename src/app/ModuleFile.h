// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vellumo {

/// The full name of one of the program's own modules, which are loaded when they are needed first.
/// Needs the application object.
[[nodiscard]] QString moduleFile(const QString &name);

} // namespace vellumo
