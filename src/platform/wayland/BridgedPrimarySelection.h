// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FrontWindows.h"
#include "platform/Pasteboard.h"
#include <QSet>

namespace vellumo {

/// The PRIMARY selection of a Wayland session as XWayland shows it. There the compositor owns the
/// text of native windows, and their application is unknown. The text is attributed to the native
/// window in front if it was published since this window came to the front, and to process 0 if it
/// was published since the last known window lost the keyboard.
class BridgedPrimarySelection : public PrimarySelection {
public:
    using Process = std::function<std::optional<qint64>()>;

    /// Both must outlive this object. `compositor` returns the process of the compositor as a
    /// client of XWayland; absent when it is none.
    BridgedPrimarySelection(PrimarySelection &x11, FrontWindows &native, Process compositor);

    [[nodiscard]] std::optional<Publication> publication() override;
    [[nodiscard]] bool publishes(qint64 processIdentifier) override;
    [[nodiscard]] std::optional<QString> string(QDeadlineTimer deadline) override;

private:
    PrimarySelection &x11_;
    FrontWindows &native_;
    Process compositor_;
    QSet<qint64> publishers_; ///< native applications
};

} // namespace vellumo
