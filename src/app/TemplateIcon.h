// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace vellumo {

/// The sparkle in one colour, which panels may choose themselves: where vellumo is installed the
/// icon carries the name of its symbolic form in the icon theme. `dark` asks for pixels that can be
/// seen on a dark panel.
[[nodiscard]] QIcon templateIcon(bool dark);

} // namespace vellumo
