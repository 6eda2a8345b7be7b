// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "app/CommandLine.h"
#include "app/DataFolderLock.h"
#include <optional>

namespace vellumo {

/// What must be settled before the application object is made: the arguments, whether a vellumo
/// already runs, the window system, the renderer. To be kept for the whole run.
class Startup {
public:
    Startup(int argc, char **argv);

    /// The exit status when there is nothing to launch.
    [[nodiscard]] std::optional<int> exitStatus() const { return exitStatus_; }

    [[nodiscard]] const LaunchRequest &request() const { return request_; }

private:
    /// Lets the vellumo that runs do what is asked; the exit status, or nothing when this process
    /// is to be the one that runs.
    [[nodiscard]] std::optional<int> becomeTheOnlyInstance();
    [[nodiscard]] std::optional<int> withoutInstance() const;

    LaunchRequest request_;
    DataFolderLock lock_;
    std::optional<int> exitStatus_;
};

} // namespace vellumo
