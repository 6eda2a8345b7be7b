// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "app/CommandLine.h"
#include "app/DataFolderLock.h"
#include <optional>
#include <utility>

namespace vellumo {

/// What is settled before anything is launched: the arguments, the window system and the renderer,
/// then whether a vellumo already runs. To be kept for the whole run.
class Startup {
public:
    /// Before the application object is made. There may be only one in a process that goes on: with
    /// the first, Qt forgets how windows are shown to assistive technologies.
    Startup(int argc, char **argv);

    /// The exit status when there is nothing to launch.
    [[nodiscard]] std::optional<int> exitStatus() const { return exitStatus_; }

    /// Lets the vellumo that runs do what is asked; the exit status, or nothing when this process
    /// is to be the one that runs. Needs the application object.
    [[nodiscard]] std::optional<int> becomeTheOnlyInstance();

    /// Returns whether only a report of this session is wanted.
    [[nodiscard]] bool isForReport() const
    {
        return request_.command == LaunchRequest::Command::Doctor;
    }

    /// What the program was started for; nothing of it is kept here, since addresses carry secrets.
    [[nodiscard]] LaunchRequest takeRequest() { return std::exchange(request_, {}); }

private:
    void avoidHungBus();
    [[nodiscard]] int undoDesktopChanges();
    [[nodiscard]] std::optional<int> withoutInstance() const;
    [[nodiscard]] static int printReportOf(const RunningInstance &running);
    /// Returns the exit status of a start that comes to nothing. Blocks until a window that says
    /// why is closed, where the user has asked for a window.
    [[nodiscard]] int refuse(const QString &english, const QString &chinese);

    LaunchRequest request_;
    DataFolderLock lock_;
    QString remark_; ///< on the window system, for the user
    std::optional<int> exitStatus_;
};

} // namespace vellumo
