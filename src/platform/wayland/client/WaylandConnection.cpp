// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/WaylandConnection.h"

#include <algorithm>
#include <cerrno>
#include <poll.h>
#include <utility>

namespace vellumo {

bool waitForDescriptor(int descriptor, short events, QDeadlineTimer deadline)
{
    pollfd request{descriptor, events, 0};
    int count = 0;
    do {
        const qint64 remaining = deadline.remainingTime();
        count = ::poll(&request, 1, static_cast<int>(std::clamp<qint64>(remaining, 0, 60'000)));
    } while (count < 0 && errno == EINTR);
    return count > 0;
}

std::unique_ptr<WaylandConnection> WaylandConnection::connect()
{
    wl_display *display = wl_display_connect(nullptr);
    return display == nullptr ? nullptr
                              : std::unique_ptr<WaylandConnection>(new WaylandConnection(display));
}

WaylandConnection::WaylandConnection(wl_display *display)
    : display_(display)
    , registry_(wl_display_get_registry(display))
{
    static constexpr wl_registry_listener listener{&onGlobal, &onGlobalRemoved};
    wl_registry_add_listener(registry_, &listener, this);
}

WaylandConnection::~WaylandConnection()
{
    for (const auto &each : synchronizations_) {
        wl_callback_destroy(each->callback);
    }
    wl_registry_destroy(registry_);
    wl_display_disconnect(display_); // the server destroys what belonged to the connection
}

uint32_t WaylandConnection::version(const char *interface) const
{
    return globals_.value(interface).version;
}

wl_proxy *WaylandConnection::bind(const wl_interface &interface, uint32_t version)
{
    return static_cast<wl_proxy *>(
        wl_registry_bind(registry_, globals_.value(interface.name).name, &interface, version));
}

void WaylandConnection::whenAnswered(std::function<void()> done)
{
    static constexpr wl_callback_listener listener{&onDone};
    wl_callback *callback = wl_display_sync(display_);
    synchronizations_.push_back(
        std::make_unique<Synchronization>(Synchronization{*this, callback, std::move(done)}));
    wl_callback_add_listener(callback, &listener, synchronizations_.back().get());
    static_cast<void>(wl_display_flush(display_));
}

void WaylandConnection::onDone(void *data, wl_callback *callback, uint32_t /*serial*/)
{
    auto &all = static_cast<Synchronization *>(data)->connection.synchronizations_;
    const auto answered =
        std::ranges::find_if(all, [data](const auto &each) { return each.get() == data; });
    const auto synchronization = std::move(*answered);
    all.erase(answered);
    wl_callback_destroy(callback);
    synchronization->done();
}

bool WaylandConnection::roundTrip(QDeadlineTimer deadline)
{
    if (isStalled_) {
        readEvents();
    }
    if (isLost_ || isStalled_) {
        return false;
    }
    isStalled_ = true;
    whenAnswered([this] { isStalled_ = false; });
    while (isStalled_ && waitForEvents(deadline)) { }
    return !isStalled_;
}

bool WaylandConnection::flush(QDeadlineTimer deadline)
{
    while (wl_display_flush(display_) < 0) {
        if (errno != EAGAIN || !waitForDescriptor(descriptor(), POLLOUT, deadline)) {
            return false;
        }
    }
    return true;
}

void WaylandConnection::readEvents()
{
    static_cast<void>(waitForEvents(QDeadlineTimer(0)));
}

bool WaylandConnection::waitForEvents(QDeadlineTimer deadline)
{
    if (isLost_) {
        return false;
    }
    bool isAlive = true;
    int count = 0;
    while (isAlive && wl_display_prepare_read(display_) != 0) {
        const int dispatched = wl_display_dispatch_pending(display_);
        isAlive = dispatched >= 0;
        count += std::max(dispatched, 0);
    }
    if (isAlive) {
        const bool isReadable = flush(deadline)
            && waitForDescriptor(descriptor(), POLLIN, count > 0 ? QDeadlineTimer(0) : deadline);
        if (isReadable) {
            isAlive = wl_display_read_events(display_) == 0;
            count += 1;
        } else {
            wl_display_cancel_read(display_);
        }
    }
    isAlive = isAlive && wl_display_dispatch_pending(display_) >= 0;
    static_cast<void>(wl_display_flush(display_)); // requests of the listeners
    isLost_ = !isAlive || wl_display_get_error(display_) != 0;
    return !isLost_ && count > 0;
}

void WaylandConnection::onGlobal(void *data, wl_registry * /*registry*/, uint32_t name,
                                 const char *interface, uint32_t version)
{
    auto &globals = static_cast<WaylandConnection *>(data)->globals_;
    if (!globals.contains(interface)) {
        globals.insert(interface, {name, version});
    }
}

void WaylandConnection::onGlobalRemoved(void *data, wl_registry * /*registry*/, uint32_t name)
{
    static_cast<WaylandConnection *>(data)->globals_.removeIf(
        [name](const auto &each) { return each.value().name == name; });
}

} // namespace vellumo
