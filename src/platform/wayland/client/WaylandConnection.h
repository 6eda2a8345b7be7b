// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QHash>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <vector>
#include <wayland-client.h>

namespace vellumo {

/// Waits for an event of a file descriptor. Returns whether it occurred before the deadline.
[[nodiscard]] bool waitForDescriptor(int descriptor, short events, QDeadlineTimer deadline);

/// Installs functions as the listener of a proxy, in the order of the protocol's events. The client
/// library takes them as an array of untyped functions.
template <auto... functions> void listen(wl_proxy *proxy, void *data)
{
    static std::array<void (*)(), sizeof...(functions)> listener{
        reinterpret_cast<void (*)()>(functions)...};
    wl_proxy_add_listener(proxy, listener.data(), data);
}

/// A connection to the compositor. Every wait has a deadline, since a compositor can stop. May be
/// used in one thread only.
class WaylandConnection {
public:
    /// Connects to the compositor that the environment names, without waiting for answers. Returns
    /// null when there is none.
    [[nodiscard]] static std::unique_ptr<WaylandConnection> connect();
    ~WaylandConnection();
    Q_DISABLE_COPY_MOVE(WaylandConnection)

    /// For event queues of other threads. The object itself is for one thread.
    [[nodiscard]] wl_display *display() const { return display_; }
    [[nodiscard]] int descriptor() const { return wl_display_get_fd(display_); }

    /// Returns whether the compositor has closed the connection.
    [[nodiscard]] bool isLost() const { return isLost_; }

    /// Returns whether the compositor has not answered the last roundTrip() yet.
    [[nodiscard]] bool isStalled() const { return isStalled_; }

    /// Returns the version of a global that the compositor offers; 0 if it does not. Globals are
    /// known after the first answer.
    [[nodiscard]] uint32_t version(const char *interface) const;

    /// Binds a global. The caller owns the proxy.
    [[nodiscard]] wl_proxy *bind(const wl_interface &interface, uint32_t version);

    /// Calls `done` when the compositor has answered all earlier requests, while events are read.
    void whenAnswered(std::function<void()> done);

    /// Blocks until the compositor has answered all earlier requests. Returns false at the
    /// deadline. Does not wait again while the compositor is stalled.
    bool roundTrip(QDeadlineTimer deadline);

    /// Sends the requests. Returns false if they could not be sent before the deadline.
    bool flush(QDeadlineTimer deadline);

    /// Processes the events that have arrived.
    void readEvents();

    /// Blocks until there are events and processes them. Returns false at the deadline and when the
    /// connection is lost.
    bool waitForEvents(QDeadlineTimer deadline);

private:
    struct Global {
        uint32_t name = 0;
        uint32_t version = 0;
    };
    /// A request for an answer.
    struct Synchronization {
        WaylandConnection &connection;
        wl_callback *callback;
        std::function<void()> done;
    };

    explicit WaylandConnection(wl_display *display);

    // Listeners, which the client library calls while it dispatches events.
    static void onGlobal(void *data, wl_registry *registry, uint32_t name, const char *interface,
                         uint32_t version);
    static void onGlobalRemoved(void *data, wl_registry *registry, uint32_t name);
    static void onDone(void *data, wl_callback *callback, uint32_t serial);

    wl_display *display_;
    wl_registry *registry_;
    QHash<QByteArray, Global> globals_; ///< the first one of each interface
    std::vector<std::unique_ptr<Synchronization>> synchronizations_;
    bool isLost_ = false;
    bool isStalled_ = false;
};

} // namespace vellumo
