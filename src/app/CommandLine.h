// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dbus/RunningInstance.h"
#include <QStringList>
#include <variant>

namespace vellumo {

/// The purpose of a start.
struct LaunchRequest {
    enum class Command : quint8 {
        Open,
        Explain,
        Notes,
        Focus,
        Quit,
        Doctor, ///< prints a report and ends
        UndoDesktopChanges,
    };

    Command command = Command::Open;
    QStringList urls;
    bool isInBackground = false; ///< opens no window unasked

    /// Returns whether the start asks only that vellumo runs.
    [[nodiscard]] bool wantsNothing() const
    {
        return isInBackground && command == Command::Open && urls.isEmpty();
    }
    [[nodiscard]] InstanceRequest forInstance() const;
};

namespace CommandLine {

/// Parses the program's arguments, without a display or an application object. Returns the exit
/// status when nothing is left to do; help and errors have been printed then.
[[nodiscard]] std::variant<int, LaunchRequest> parse(const QStringList &arguments);

/// Whether the text is an address with the program's own scheme, well-formed or not.
[[nodiscard]] bool isOwnUrl(const QString &text);

} // namespace CommandLine

} // namespace vellumo
