// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dbus/RunningInstance.h"
#include <QStringList>
#include <variant>

namespace vellumo {

/// What the program was started for.
struct LaunchRequest {
    enum class Command : quint8 { Open, Explain, Notes, Focus, Quit };

    Command command = Command::Open;
    QStringList urls;
    bool isInBackground = false; ///< opens no window of its own accord

    /// Only to be there, which a vellumo that runs already is.
    [[nodiscard]] bool wantsNothing() const
    {
        return isInBackground && command == Command::Open && urls.isEmpty();
    }
    [[nodiscard]] InstanceRequest forInstance() const;
};

namespace CommandLine {

/// Understands the program's arguments, without a display; the exit status when there is nothing
/// more to do, after what there is to say has been printed. Needs no application object.
[[nodiscard]] std::variant<int, LaunchRequest> parse(const QStringList &arguments);

/// Whether the text is an address with the program's own scheme, well-formed or not.
[[nodiscard]] bool isOwnUrl(const QString &text);

} // namespace CommandLine

} // namespace vellumo
