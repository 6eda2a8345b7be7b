// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Pasteboard.h"
#include <functional>

namespace vellumo {

/// The clipboard of all windows as the compositor shows it to clipboard managers. It does not name
/// the applications that own the contents. A snapshot is limited to 64 MiB and 256 types; a larger
/// one is absent. Main thread only.
class ManagedClipboard {
public:
    ManagedClipboard() = default;
    virtual ~ManagedClipboard() = default;
    Q_DISABLE_COPY_MOVE(ManagedClipboard)

    /// Called after the contents have changed, also within the calls below.
    std::function<void()> onChange;

    /// Returns false before the compositor has answered, after the connection is lost, and if the
    /// compositor has no data control. Nothing else may be called then.
    [[nodiscard]] virtual bool isAvailable() const = 0;

    /// Returns a number that grows with each change of the contents.
    [[nodiscard]] virtual quint64 changeCount() = 0;

    /// Returns that number after the events that have been processed, without asking the
    /// compositor.
    [[nodiscard]] virtual quint64 seenChangeCount() const = 0;

    /// Blocks, without running an event loop, until the contents have changed since the change
    /// count was `count`. Returns false at the deadline.
    [[nodiscard]] virtual bool waitForChange(quint64 count, QDeadlineTimer deadline) = 0;

    /// These are those of Pasteboard.
    [[nodiscard]] virtual std::optional<QList<PasteboardItem>> items(QDeadlineTimer deadline) = 0;
    [[nodiscard]] virtual std::optional<QString> string(QDeadlineTimer deadline) = 0;
    virtual void clear() = 0;

    /// Becomes the owner and serves other clients from a thread until another owner takes over. If
    /// the compositor has stopped, this happens when it continues.
    virtual void write(const QList<PasteboardItem> &items) = 0;
};

} // namespace vellumo
