// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

/// Looks for a newer release and shows the user what came of it, in windows of its own.
class UpdateControlling {
public:
    virtual ~UpdateControlling() = default;

    /// The user asks. May be called again while an earlier check still runs.
    virtual void checkForUpdates() = 0;

    /// The program looks by itself: only a newer release opens a window. Does nothing while one is
    /// open.
    virtual void lookQuietly() = 0;
};

} // namespace vellumo
