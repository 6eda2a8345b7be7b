// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/XcbPtr.h"
#include <QByteArray>
#include <QDeadlineTimer>
#include <QHash>
#include <QObject>
#include <deque>
#include <functional>

class QSocketNotifier;

namespace vellumo {

class X11Problems;

/// One connection to the X server beside Qt's own, with waits that end at a deadline.
///
/// Events are kept in one queue in their order of arrival. They are given to the event handler from
/// the event loop, also those that arrived while something was waited for. Without a server, or
/// after the server has gone, every question has no answer and no event comes. Belongs to the
/// thread that makes it.
class X11Connection : public QObject {
    Q_OBJECT

public:
    using EventHandler = std::function<void(const xcb_generic_event_t &)>;
    using EventFilter = std::function<bool(const xcb_generic_event_t &)>;

    /// An empty display means the one that the environment names.
    explicit X11Connection(X11Problems &problems, const QByteArray &display = {});
    ~X11Connection() override;
    Q_DISABLE_COPY_MOVE(X11Connection)

    [[nodiscard]] bool isUsable() const { return !lost_; }

    /// As it was given; empty for the one that the environment names.
    [[nodiscard]] QByteArray display() const { return display_; }

    /// Never null: requests on a connection without a server are ignored.
    [[nodiscard]] xcb_connection_t *xcb() const { return xcb_; }
    [[nodiscard]] xcb_window_t root() const { return root_; }

    /// Time that a question to the server itself may take; it answers within a millisecond unless
    /// another client holds the server.
    static QDeadlineTimer replyDeadline() { return QDeadlineTimer(500); }

    /// The atom of this name, made if needed; XCB_ATOM_NONE without a server.
    [[nodiscard]] xcb_atom_t atom(const QByteArray &name);

    /// Name of an atom that a stranger mentioned; empty when there is none.
    [[nodiscard]] QByteArray atomName(xcb_atom_t atom);

    /// Null when the server lacks the extension.
    [[nodiscard]] const xcb_query_extension_reply_t *extension(xcb_extension_t *id) const;

    /// The reply to a request made with the ordinary (checked) function; null on an error, at the
    /// deadline and without a server.
    template <typename Reply, typename Cookie>
    [[nodiscard]] XcbPtr<Reply> reply(Cookie cookie, QDeadlineTimer deadline = replyDeadline())
    {
        return XcbPtr<Reply>(static_cast<Reply *>(waitForReply(cookie.sequence, deadline)));
    }

    /// Blocks until the server has carried out everything sent so far, and every event that it
    /// sent before that is in the queue.
    bool roundTrip(QDeadlineTimer deadline = replyDeadline());

    /// Sends what is buffered. Use this rather than xcb_flush(): that may read events, which would
    /// then lie unnoticed until the next one comes.
    void flush();

    void setEventHandler(EventHandler handler) { handler_ = std::move(handler); }

    /// Blocks until an event in the queue satisfies `wanted`, which sees each event once, in order.
    /// The events stay in the queue. Null at the deadline.
    const xcb_generic_event_t *findEvent(const EventFilter &wanted, QDeadlineTimer deadline);

    /// As findEvent(), but removes the event, so that the handler does not see it.
    XcbEvent takeEvent(const EventFilter &wanted, QDeadlineTimer deadline);

private:
    void internKnownAtoms();
    void *waitForReply(unsigned int sequence, QDeadlineTimer deadline);
    bool waitReadable(QDeadlineTimer deadline);
    void readEvents();
    void scheduleDispatch();
    void dispatch();

    X11Problems &problems_;
    QByteArray display_;
    xcb_connection_t *xcb_ = nullptr;
    xcb_window_t root_ = XCB_WINDOW_NONE;
    bool lost_ = false;
    bool dispatchScheduled_ = false;
    QSocketNotifier *notifier_ = nullptr;
    EventHandler handler_;
    std::deque<XcbEvent> queue_;
    QHash<QByteArray, xcb_atom_t> atoms_;
};

} // namespace vellumo
