// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11Connection.h"

#include "platform/x11/X11Problems.h"
#include <QPointer>
#include <QSocketNotifier>
#include <algorithm>
#include <array>
#include <cerrno>
#include <poll.h>
#include <string_view>
#include <xcb/res.h>
#include <xcb/xcbext.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>
#define explicit explicit_ // the header is written for C and has a field of this name
#include <xcb/xkb.h>
#undef explicit

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// Asked for together when the connection is opened.
constexpr auto knownAtoms = std::to_array<std::string_view>(
    {"ATOM_PAIR", "CLIPBOARD", "CLIPBOARD_MANAGER", "INCR", "MULTIPLE", "SAVE_TARGETS", "TARGETS",
     "TIMESTAMP", "UTF8_STRING", "VELLUMO_SELECTION", "_GTK_APPLICATION_ID", "_NET_ACTIVE_WINDOW",
     "_NET_SUPPORTED", "_NET_WM_NAME", "_NET_WM_PID", "text/plain;charset=utf-8"});

} // namespace

X11Connection::X11Connection(X11Problems &problems, const QByteArray &display)
    : problems_(problems)
    , display_(display)
    , atoms_(
          [this](auto * /*xcb_*/, auto cookie) { return reply<xcb_intern_atom_reply_t>(cookie); })
{
    int screenNumber = 0;
    xcb_ = xcb_connect(display.isEmpty() ? nullptr : display.constData(), &screenNumber);
    if (xcb_connection_has_error(xcb_) != 0) {
        lost_ = true;
        problems_.add(u"no X server, so other programs cannot be watched"_s);
        return;
    }
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(xcb_));
    for (; screenNumber > 0 && screens.rem > 1; --screenNumber) {
        xcb_screen_next(&screens);
    }
    root_ = screens.data->root;
    for (auto *id : {&xcb_xkb_id, &xcb_input_id, &xcb_test_id, &xcb_xfixes_id, &xcb_res_id}) {
        xcb_prefetch_extension_data(xcb_, id);
    }
    atoms_.prefetch(xcb_, knownAtoms);
    notifier_ = new QSocketNotifier(xcb_get_file_descriptor(xcb_), QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, [this] {
        readEvents();
        dispatch();
    });
}

X11Connection::~X11Connection()
{
    delete notifier_; // before its descriptor is closed
    xcb_disconnect(xcb_);
}

xcb_atom_t X11Connection::atom(const QByteArray &name)
{
    return atoms_.atom(xcb_, name);
}

QByteArray X11Connection::atomName(xcb_atom_t atom)
{
    const auto answer = reply<xcb_get_atom_name_reply_t>(xcb_get_atom_name(xcb_, atom));
    if (!answer) {
        return {};
    }
    return {xcb_get_atom_name_name(answer.get()), xcb_get_atom_name_name_length(answer.get())};
}

const xcb_query_extension_reply_t *X11Connection::extension(xcb_extension_t *id) const
{
    if (lost_) {
        return nullptr;
    }
    const auto *data = xcb_get_extension_data(xcb_, id);
    return data != nullptr && data->present != 0 ? data : nullptr;
}

bool X11Connection::roundTrip(QDeadlineTimer deadline)
{
    return reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(xcb_), deadline) != nullptr;
}

void X11Connection::flush()
{
    if (!lost_) {
        xcb_flush(xcb_);
        readEvents();
    }
}

const xcb_generic_event_t *X11Connection::findEvent(const EventFilter &wanted,
                                                    QDeadlineTimer deadline)
{
    size_t next = 0;
    flush();
    for (;;) {
        for (; next < queue_.size(); ++next) {
            if (wanted(*queue_[next])) {
                return queue_[next].get();
            }
        }
        if (!waitReadable(deadline)) {
            return nullptr;
        }
        readEvents();
    }
}

XcbEvent X11Connection::takeEvent(const EventFilter &wanted, QDeadlineTimer deadline)
{
    const auto *event = findEvent(wanted, deadline);
    const auto found = std::ranges::find(queue_, event, &XcbEvent::get);
    if (found == queue_.end()) {
        return nullptr;
    }
    XcbEvent taken = std::move(*found);
    queue_.erase(found);
    return taken;
}

void *X11Connection::waitForReply(unsigned int sequence, QDeadlineTimer deadline)
{
    if (lost_) {
        return nullptr;
    }
    xcb_flush(xcb_);
    void *reply = nullptr;
    xcb_generic_error_t *error = nullptr;
    while (xcb_poll_for_reply(xcb_, sequence, &reply, &error) == 0) {
        if (!waitReadable(deadline)) {
            xcb_discard_reply(xcb_, sequence);
            break;
        }
    }
    FreeDeleter()(error);
    readEvents(); // events may have arrived with the reply
    return reply;
}

bool X11Connection::waitReadable(QDeadlineTimer deadline)
{
    while (!lost_ && xcb_connection_has_error(xcb_) == 0) {
        pollfd entry{xcb_get_file_descriptor(xcb_), POLLIN, 0};
        const qint64 left = deadline.remainingTimeNSecs(); // negative: forever
        const timespec timeout{left / 1'000'000'000, left % 1'000'000'000};
        const int ready = ppoll(&entry, 1, left < 0 ? nullptr : &timeout, nullptr);
        if (ready > 0) {
            return true;
        }
        if (ready == 0 || errno != EINTR) {
            return false;
        }
    }
    return false;
}

void X11Connection::readEvents()
{
    if (lost_) {
        return;
    }
    while (XcbEvent event{xcb_poll_for_event(xcb_)}) {
        if (event->response_type != 0) { // errors are about windows that no longer exist
            queue_.push_back(std::move(event));
        }
    }
    if (xcb_connection_has_error(xcb_) != 0) {
        lost_ = true;
        if (notifier_ != nullptr) {
            notifier_->setEnabled(false);
        }
        problems_.connectionLost();
    }
    scheduleDispatch();
}

void X11Connection::scheduleDispatch()
{
    if (!queue_.empty() && !dispatchScheduled_) {
        dispatchScheduled_ = true;
        QMetaObject::invokeMethod(this, &X11Connection::dispatch, Qt::QueuedConnection);
    }
}

void X11Connection::dispatch()
{
    dispatchScheduled_ = false;
    const QPointer<X11Connection> self(this);
    while (self && !queue_.empty()) {
        const XcbEvent event = std::move(queue_.front());
        queue_.pop_front();
        if (handler_) {
            handler_(*event);
        }
    }
}

} // namespace vellumo
