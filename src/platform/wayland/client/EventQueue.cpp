// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/EventQueue.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>

namespace vellumo {

namespace {

constexpr qint64 maxPoll = 1000;

/// Returns whether the file descriptor has the event before the deadline.
bool waitFor(int descriptor, short events, QDeadlineTimer deadline)
{
    pollfd request{descriptor, events, 0};
    int count = 0;
    do {
        const qint64 remaining = std::clamp<qint64>(deadline.remainingTime(), 0, maxPoll);
        count = ::poll(&request, 1, static_cast<int>(remaining));
    } while (count < 0 && errno == EINTR);
    return count > 0;
}

} // namespace

EventQueue::EventQueue(wl_display *display)
    : display_(display)
    , queue_(wl_display_create_queue(display))
{
}

EventQueue::Wrapper EventQueue::wrap(void *proxy) const
{
    auto *wrapper = static_cast<wl_proxy *>(wl_proxy_create_wrapper(proxy));
    wl_proxy_set_queue(wrapper, queue_.get());
    return Wrapper(wrapper);
}

bool EventQueue::waitUntil(const std::function<bool()> &isMet, QDeadlineTimer deadline)
{
    for (;;) {
        while (wl_display_prepare_read_queue(display_, queue_.get()) != 0) {
            if (wl_display_dispatch_queue_pending(display_, queue_.get()) < 0) {
                return false;
            }
        }
        const int descriptor = wl_display_get_fd(display_);
        const bool isSent = wl_display_flush(display_) >= 0
            || (errno == EAGAIN && waitFor(descriptor, POLLOUT, deadline));
        if (isMet() || !isSent || !waitFor(descriptor, POLLIN, deadline)) {
            wl_display_cancel_read(display_);
            return isMet();
        }
        if (wl_display_read_events(display_) != 0) {
            return false;
        }
    }
}

void EventQueue::dispatchPending()
{
    wl_display_dispatch_queue_pending(display_, queue_.get());
}

} // namespace vellumo
