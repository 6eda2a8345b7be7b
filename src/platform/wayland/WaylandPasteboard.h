// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Pasteboard.h"
#include <functional>

class QMimeData;

namespace vellumo {

class ManagedClipboard;
class X11Pasteboard;

/// The clipboard of a Wayland session: as the compositor shows it to clipboard managers, where it
/// does, and else as XWayland shows it. A clipboard manager is not told the owner of the contents:
/// the application that was in front when they changed is taken for it, since only the application
/// with the keyboard can copy. A change while a process is waited for counts as this process's.
class WaylandPasteboard : public Pasteboard {
public:
    /// Returns the process in front; absent when it is unknown.
    using FrontProcess = std::function<std::optional<qint64>()>;

    /// All must outlive this object; `managed` may be null.
    WaylandPasteboard(X11Pasteboard &x11, ManagedClipboard *managed, FrontProcess frontProcess);
    ~WaylandPasteboard() override;
    Q_DISABLE_COPY_MOVE(WaylandPasteboard)

    [[nodiscard]] bool namesOwners() const override;
    [[nodiscard]] quint64 changeCount() override;
    [[nodiscard]] std::optional<qint64> ownerProcess() override;
    [[nodiscard]] std::optional<quint32> waitForOwner(qint64 process, quint64 count,
                                                      QDeadlineTimer deadline) override;
    [[nodiscard]] std::optional<QList<PasteboardItem>> items(QDeadlineTimer deadline) override;
    [[nodiscard]] std::optional<QString> string(QDeadlineTimer deadline) override;
    void clear() override;
    void write(const QList<PasteboardItem> &items) override;

private:
    void noteOwnCopy();
    [[nodiscard]] bool isManaged() const;
    [[nodiscard]] bool isOwnedByOwnToolkit();
    [[nodiscard]] quint64 attributeChanges(std::optional<qint64> expected = {});
    void announceSoon();

    X11Pasteboard &x11_;
    ManagedClipboard *managed_;
    FrontProcess frontProcess_;
    const QMimeData *ownContents_ = nullptr; ///< Qt's, while it owns the clipboard; only compared
    std::optional<quint64> ownCount_; ///< the change count after the last copy of our own fields
    quint64 attributedCount_ = 0; ///< the change count that the next two are for
    std::optional<qint64> owner_; ///< absent when it is unknown or this program
    quint32 changedAt_ = 0; ///< on the steady clock, in milliseconds
    bool isChangePending_ = false;
};

} // namespace vellumo
