// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

class X11Connection;

/// Which of the keys left and right of the space bar are Option (Alt) in all layouts that the user
/// may switch between. The right one is another modifier in many layouts.
struct OptionKeys {
    bool left = true;
    bool right = false;

    /// Asks the server. Without an answer, only the left key is Option.
    [[nodiscard]] static OptionKeys read(X11Connection &connection);
};

} // namespace vellumo
