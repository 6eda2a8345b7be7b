// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Pasteboard.h"
#include "platform/x11/X11SelectionThread.h"
#include <QHash>
#include <QObject>
#include <memory>
#include <xcb/xfixes.h>

namespace vellumo {

class X11Connection;
class X11Problems;

/// The CLIPBOARD selection. A snapshot is limited to 64 MiB and 256 types; a larger one is absent.
/// Written contents are served by a thread, which starts with the first write.
///
/// An item has only names and bytes. Type and format of each target's property are kept from the
/// last snapshot, so that writing it back restores them.
class X11Pasteboard : public Pasteboard {
public:
    /// `connection` must outlive this object and have no other event handler.
    X11Pasteboard(X11Connection &connection, X11Problems &problems);

    /// Hands contents over to the clipboard manager; blocks for a second at most.
    ~X11Pasteboard() override;
    Q_DISABLE_COPY_MOVE(X11Pasteboard)

    [[nodiscard]] quint64 changeCount() override;
    [[nodiscard]] std::optional<qint64> ownerProcess() override;
    [[nodiscard]] std::optional<quint32> waitForOwner(qint64 process, quint64 count,
                                                      QDeadlineTimer deadline) override;
    [[nodiscard]] std::optional<QList<PasteboardItem>> items(QDeadlineTimer deadline) override;
    [[nodiscard]] std::optional<QString> string(QDeadlineTimer deadline) override;
    void clear() override;
    void write(const QList<PasteboardItem> &items) override;

private:
    struct Form {
        xcb_atom_t type = XCB_ATOM_NONE;
        quint8 format = 8;
    };
    struct OwnerChange {
        quint64 count = 0; ///< the change count after this change
        xcb_window_t owner = XCB_WINDOW_NONE;
        xcb_timestamp_t time = XCB_CURRENT_TIME;
    };

    [[nodiscard]] X11SelectionThread &thread();
    [[nodiscard]] bool isServed(xcb_window_t owner);
    [[nodiscard]] bool isOwnerChange(const xcb_generic_event_t &event) const;
    [[nodiscard]] bool isOwnedByOwnToolkit(xcb_window_t owner);
    [[nodiscard]] Form formOf(const QString &type, qsizetype size);
    [[nodiscard]] bool takeOwnerChange(QDeadlineTimer deadline);
    void note(const xcb_xfixes_selection_notify_event_t &change);

    X11Connection &connection_;
    xcb_atom_t clipboard_;
    std::unique_ptr<X11SelectionThread> thread_; ///< null until the first write
    QList<X11SelectionServer::Content> served_; ///< last passed to the thread
    quint8 fixesEvent_ = 0; ///< 0 without the extension
    quint64 changeCount_ = 0;
    QList<OwnerChange> changes_; ///< the latest ones, in order
    bool isChangePending_ = false;
    QHash<QString, Form> forms_;
    QObject context_; ///< context of queued calls
};

} // namespace vellumo
