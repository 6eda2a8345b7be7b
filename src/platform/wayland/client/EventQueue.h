// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>
#include <functional>
#include <memory>
#include <wayland-client-core.h>

namespace vellumo {

/// A queue for the events of some objects of a connection, so that they can be waited for without
/// processing those of others. Other threads may read the connection at the same time.
class EventQueue {
public:
    explicit EventQueue(wl_display *display);

    /// Returns a wrapper of a proxy; objects that are created through it use this queue.
    struct WrapperDeleter {
        void operator()(wl_proxy *wrapper) const { wl_proxy_wrapper_destroy(wrapper); }
    };
    using Wrapper = std::unique_ptr<wl_proxy, WrapperDeleter>;
    [[nodiscard]] Wrapper wrap(void *proxy) const;

    /// Blocks until the condition is met. Returns false when the deadline has passed or the
    /// connection is lost.
    [[nodiscard]] bool waitUntil(const std::function<bool()> &isMet, QDeadlineTimer deadline);

    void dispatchPending();

private:
    struct QueueDeleter {
        void operator()(wl_event_queue *queue) const { wl_event_queue_destroy(queue); }
    };

    wl_display *display_;
    std::unique_ptr<wl_event_queue, QueueDeleter> queue_;
};

} // namespace vellumo
