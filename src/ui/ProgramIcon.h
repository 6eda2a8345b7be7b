// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace vellumo {

/// Returns the program's icon for title bars and lists of windows. Drawn at each call, so that it
/// uses no memory while there is no window.
[[nodiscard]] QIcon programIcon();

} // namespace vellumo
