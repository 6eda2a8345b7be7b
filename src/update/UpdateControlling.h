// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

namespace vellumo {

/// Checks for a newer release and shows the result in its own windows. Main thread only.
class UpdateControlling {
public:
    virtual ~UpdateControlling() = default;

    /// Checks on the user's request. May be called during an earlier check.
    virtual void checkForUpdates() = 0;

    /// Checks in the background: opens a window only for a newer release. Does nothing while one is
    /// open.
    virtual void checkInBackground() = 0;
};

} // namespace vellumo
