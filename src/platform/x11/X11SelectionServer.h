// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/SelectionValue.h"
#include <QDeadlineTimer>
#include <QList>
#include <QObject>
#include <QTimer>
#include <functional>
#include <list>
#include <xcb/xcb.h>

namespace vellumo {

class X11Connection;

/// Owns a selection and serves its contents. Never waits for a requestor: a large value is sent in
/// parts, each after the requestor has taken the previous one, and a requestor that stops is
/// dropped.
class X11SelectionServer : public QObject {
    Q_OBJECT

public:
    struct Content {
        xcb_atom_t target = XCB_ATOM_NONE;
        SelectionValue value;
    };

    /// `connection` must outlive this object; the caller passes its events to handleEvent().
    X11SelectionServer(X11Connection &connection, xcb_atom_t selection);
    ~X11SelectionServer() override;
    Q_DISABLE_COPY_MOVE(X11SelectionServer)

    /// Returns the window that owns the selection while this object serves it.
    [[nodiscard]] xcb_window_t window() const { return window_; }

    /// Becomes the owner with these contents. Returns false when the server refuses.
    bool own(QList<Content> contents);

    /// Asks the desktop's clipboard manager to take over the contents and serves it until it has
    /// done so. Does nothing when this object owns nothing or there is no manager.
    void handOver(QDeadlineTimer deadline);

    void handleEvent(const xcb_generic_event_t &event);

private:
    struct Transfer {
        xcb_window_t requestor = XCB_WINDOW_NONE;
        xcb_atom_t property = XCB_ATOM_NONE;
        SelectionValue value;
        qsizetype sent = 0;
        QDeadlineTimer deadline;
    };

    [[nodiscard]] xcb_timestamp_t serverTime();
    [[nodiscard]] bool isOwner();
    void answer(const xcb_selection_request_event_t &request);
    [[nodiscard]] bool convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property);
    [[nodiscard]] bool convertMultiple(xcb_window_t requestor, xcb_atom_t property);
    [[nodiscard]] bool send(xcb_window_t requestor, xcb_atom_t property,
                            const SelectionValue &value);
    [[nodiscard]] bool startTransfer(xcb_window_t requestor, xcb_atom_t property,
                                     const SelectionValue &value);
    void setProperty(xcb_window_t requestor, xcb_atom_t property, const SelectionValue &value,
                     qsizetype from, qsizetype length);
    void continueTransfer(xcb_window_t requestor, xcb_atom_t property);
    void endTransfers(const std::function<bool(const Transfer &)> &which);
    [[nodiscard]] SelectionValue targetList() const;

    X11Connection &connection_;
    xcb_atom_t selection_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    xcb_timestamp_t ownedSince_ = XCB_CURRENT_TIME;
    QList<Content> contents_;
    std::list<Transfer> transfers_;
    QTimer expiryTimer_;
};

} // namespace vellumo
