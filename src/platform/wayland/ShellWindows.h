// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FrontWindows.h"
#include "platform/wayland/ReportedWindow.h"
#include "platform/wayland/ShellCompanion.h"

namespace vellumo {

/// Finds the window in front by the reports of the companion in GNOME Shell, for native and X11
/// windows, also without accessibility. Absent while it does not report. Windows of this process
/// are ignored.
class ShellWindows : public FrontWindows {
    Q_OBJECT

public:
    /// `companion` must outlive this object.
    explicit ShellWindows(ShellCompanion &companion);

    [[nodiscard]] std::optional<FrontWindow> frontWindow() override;
    [[nodiscard]] std::optional<QString> windowTitle(qint64 processIdentifier) override;

private:
    void take(const ShellCompanion::Window &window);

    ShellCompanion &companion_;
    ReportedWindow front_;
    QString title_;
};

} // namespace vellumo
