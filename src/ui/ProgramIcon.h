// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace vellumo {

/// The program's icon for title bars and lists of windows. Drawn at each call, so that
/// nothing of it is kept while there is no window.
[[nodiscard]] QIcon programIcon();

} // namespace vellumo
