// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace vellumo {

/// Asks the user whether this program may read other applications. Main thread only.
class ConsentPrompting {
public:
    virtual ~ConsentPrompting() = default;

    /// Shows the question and returns at once. `answered` runs once on the main thread, with false
    /// when the question is closed. If a question is already open, it is raised and the new
    /// callback replaces the old one, which never runs.
    virtual void ask(std::function<void(bool allowed)> answered) = 0;
};

} // namespace vellumo
