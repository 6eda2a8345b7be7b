// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/FrontWindows.h"
#include "platform/Pasteboard.h"
#include <QSet>

namespace vellumo {

/// The PRIMARY selection of a Wayland session: as the compositor tells its clipboard managers,
/// where it has such a protocol, and as XWayland shows it. In both the application of a native
/// window's text is unknown; in XWayland the compositor owns this text. It is attributed to the
/// native window in front if it was published since this window came to the front, and to process 0
/// if it was published since the last known window lost the keyboard.
class BridgedPrimarySelection : public PrimarySelection {
public:
    using Process = std::function<std::optional<qint64>()>;

    /// All must outlive this object; `managed` is that of clipboard managers, or null. `compositor`
    /// returns the process of the compositor as a client of XWayland; absent when it is none.
    BridgedPrimarySelection(PrimarySelection &x11, PrimarySelection *managed, FrontWindows &native,
                            Process compositor);

    [[nodiscard]] std::optional<Publication> publication() override;
    [[nodiscard]] bool publishes(qint64 processIdentifier) override;
    [[nodiscard]] std::optional<QString> string(QDeadlineTimer deadline) override;

private:
    [[nodiscard]] std::optional<Publication> attributed(Publication publication);

    PrimarySelection &x11_;
    PrimarySelection *managed_;
    PrimarySelection *latest_; ///< the one that the last publication() is from
    FrontWindows &native_;
    Process compositor_;
    QSet<qint64> publishers_; ///< native applications
};

} // namespace vellumo
