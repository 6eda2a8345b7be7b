// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/AtomCache.h"
#include "platform/x11/XcbPtr.h"
#include <QByteArray>
#include <QDeadlineTimer>
#include <QObject>
#include <deque>
#include <functional>

class QSocketNotifier;

namespace vellumo {

class X11Problems;

/// One connection to the X server beside Qt's own, with waits that end at a deadline.
///
/// Events are queued in their order of arrival and passed to the event handler from the event loop,
/// including those that arrived during a wait. Without a server, or after the connection is lost,
/// requests have no reply and no events arrive. Belongs to the thread that creates it.
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

    /// Returns the display as given to the constructor.
    [[nodiscard]] QByteArray display() const { return display_; }

    /// Never returns null: requests on a connection without a server are ignored.
    [[nodiscard]] xcb_connection_t *xcb() const { return xcb_; }
    [[nodiscard]] xcb_window_t root() const { return root_; }

    /// Returns the deadline for a reply of the server itself, which takes less than a millisecond
    /// unless another client grabs the server.
    static QDeadlineTimer replyDeadline() { return QDeadlineTimer(500); }

    /// Returns the atom of this name, creating it if needed; XCB_ATOM_NONE without a server. Names
    /// that are used often cost no round trip.
    [[nodiscard]] xcb_atom_t atom(const QByteArray &name);

    /// Returns the name of an atom that another client sent; empty when there is no such atom.
    [[nodiscard]] QByteArray atomName(xcb_atom_t atom);

    /// Returns null when the server lacks the extension.
    [[nodiscard]] const xcb_query_extension_reply_t *extension(xcb_extension_t *id) const;

    /// Returns the reply to a request made with the ordinary function, not the unchecked one; null
    /// on an error, at the deadline and without a server.
    template <typename Reply, typename Cookie>
    [[nodiscard]] XcbPtr<Reply> reply(Cookie cookie, QDeadlineTimer deadline = replyDeadline())
    {
        return XcbPtr<Reply>(static_cast<Reply *>(waitForReply(cookie.sequence, deadline)));
    }

    /// Blocks until the server has processed all requests so far and the events that it sent before
    /// are queued. Returns false at the deadline.
    bool roundTrip(QDeadlineTimer deadline = replyDeadline());

    /// Sends buffered requests. Use this instead of xcb_flush(), which may read events that would
    /// stay unnoticed until the next one arrives.
    void flush();

    void setEventHandler(EventHandler handler) { handler_ = std::move(handler); }

    /// Blocks until an event in the queue satisfies `wanted`, which is called once for each event,
    /// in order. The events stay in the queue, which owns the result. Returns null at the deadline.
    const xcb_generic_event_t *findEvent(const EventFilter &wanted, QDeadlineTimer deadline);

    /// As findEvent(), but removes the event, so that the event handler never gets it.
    XcbEvent takeEvent(const EventFilter &wanted, QDeadlineTimer deadline);

private:
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
    AtomCache atoms_;
};

} // namespace vellumo
