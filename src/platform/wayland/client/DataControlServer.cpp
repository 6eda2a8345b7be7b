// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/DataControlServer.h"

#include "platform/wayland/client/DataControlDevice.h"
#include "platform/wayland/client/WaylandConnection.h"
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <utility>
#include <vector>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

/// A client that takes nothing for this long is dropped.
constexpr auto transferTimeout = 5s;

/// Maximum number of clients that read at once.
constexpr std::size_t maxTransfers = 16;

/// A pipe that is ready takes this much without blocking. The descriptor belongs to the client and
/// stays in the mode in which it came.
constexpr qsizetype partSize = 4096;

constexpr auto endTimeout = 900ms;

/// Writing to a client that has gone must not end the program.
void blockBrokenPipeSignal()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

} // namespace

DataControlServer::DataControlServer(wl_display *display, std::function<void()> onRead)
    : display_(display)
    , queue_(wl_display_create_queue(display))
    , onRead_(std::move(onRead))
    , wakeDescriptor_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , thread_([this] { run(); })
{
}

DataControlServer::~DataControlServer()
{
    {
        const std::lock_guard lock(mutex_);
        isOver_ = true;
    }
    static_cast<void>(::eventfd_write(wakeDescriptor_, 1));
    thread_.join();
    for (const auto &source : sources_) {
        wl_proxy_destroy(source->proxy); // the server's object ends with the connection
    }
    wl_event_queue_destroy(queue_);
    ::close(wakeDescriptor_);
}

void DataControlServer::own(DataControlDevice &device, const PasteboardItem &contents)
{
    QList<QByteArray> types;
    for (const auto &[type, bytes] : contents) {
        types.append(type.toUtf8());
    }
    auto source = std::make_unique<Source>(Source{*this, contents, nullptr});
    source->proxy = device.makeSource(types, queue_);
    listen<&onSend, &onCancelled>(source->proxy, source.get());
    device.setClipboard(source->proxy);
    const std::lock_guard lock(mutex_);
    sources_.push_back(std::move(source));
}

bool DataControlServer::isOver()
{
    const std::lock_guard lock(mutex_);
    return isOver_;
}

void DataControlServer::run()
{
    blockBrokenPipeSignal();
    QDeadlineTimer end(QDeadlineTimer::Forever);
    bool isConnected = true;
    while (!end.hasExpired()) {
        isConnected = isConnected ? readEvents(end) : waitForWork(false, end);
        continueTransfers();
        if (end.isForever() && isOver()) {
            end = QDeadlineTimer(endTimeout);
        }
        if (!end.isForever() && transfers_.empty()) {
            break;
        }
    }
    for (const Transfer &transfer : std::as_const(transfers_)) {
        ::close(transfer.descriptor);
    }
}

/// Blocks until there is work and processes the events. Returns false when the connection is lost.
bool DataControlServer::readEvents(QDeadlineTimer end)
{
    while (wl_display_prepare_read_queue(display_, queue_) != 0) {
        if (wl_display_dispatch_queue_pending(display_, queue_) < 0) {
            return false;
        }
    }
    static_cast<void>(wl_display_flush(display_)); // requests of the listeners
    if (!waitForWork(true, end)) {
        wl_display_cancel_read(display_);
        return true;
    }
    const bool isRead = wl_display_read_events(display_) == 0;
    onRead_();
    return isRead && wl_display_dispatch_queue_pending(display_, queue_) >= 0;
}

/// Blocks until there are events, clients that can take more, or the end. Returns whether there are
/// events.
bool DataControlServer::waitForWork(bool isConnected, QDeadlineTimer end) const
{
    std::vector<pollfd> requests{
        {isConnected ? wl_display_get_fd(display_) : -1, POLLIN, 0},
        {wakeDescriptor_, POLLIN, 0},
    };
    for (const Transfer &transfer : transfers_) {
        requests.push_back({transfer.descriptor, POLLOUT, 0});
        end = std::min(end, transfer.deadline);
    }
    const auto timeout = end.isForever() ? -1 : static_cast<int>(end.remainingTime() + 1);
    const int count = ::poll(requests.data(), requests.size(), timeout);
    eventfd_t wakings = 0;
    static_cast<void>(::eventfd_read(wakeDescriptor_, &wakings));
    return count > 0 && requests.front().revents != 0;
}

void DataControlServer::continueTransfers()
{
    std::erase_if(transfers_, [](Transfer &transfer) {
        const bool isOver = !continueTransfer(transfer);
        if (isOver) {
            ::close(transfer.descriptor);
        }
        return isOver;
    });
}

/// Writes what the client takes without blocking. Returns false when the transfer is over.
bool DataControlServer::continueTransfer(Transfer &transfer)
{
    while (transfer.sent < transfer.bytes.size()) {
        if (!waitForDescriptor(transfer.descriptor, POLLOUT, QDeadlineTimer(0))) {
            return !transfer.deadline.hasExpired();
        }
        const auto length = std::min(partSize, transfer.bytes.size() - transfer.sent);
        const ssize_t count =
            ::write(transfer.descriptor, transfer.bytes.constData() + transfer.sent,
                    static_cast<std::size_t>(length));
        if (count < 0 && errno != EINTR) {
            return errno == EAGAIN && !transfer.deadline.hasExpired();
        }
        if (count > 0) {
            transfer.sent += count;
            transfer.deadline = QDeadlineTimer(transferTimeout);
        }
    }
    return false;
}

void DataControlServer::onSend(void *data, wl_proxy * /*proxy*/, const char *type, int descriptor)
{
    const auto &source = *static_cast<Source *>(data);
    const auto content = std::ranges::find(source.contents, QString::fromUtf8(type),
                                           &PasteboardItem::value_type::first);
    auto &transfers = source.server.transfers_;
    if (content == source.contents.cend() || transfers.size() >= maxTransfers) {
        ::close(descriptor);
        return;
    }
    transfers.push_back({descriptor, content->second, 0, QDeadlineTimer(transferTimeout)});
}

void DataControlServer::onCancelled(void *data, wl_proxy *proxy)
{
    wl_proxy_marshal_flags(proxy, DataControlProtocol::DestroySource, nullptr,
                           wl_proxy_get_version(proxy), WL_MARSHAL_FLAG_DESTROY);
    DataControlServer &server = static_cast<Source *>(data)->server;
    const std::lock_guard lock(server.mutex_);
    std::erase_if(server.sources_, [data](const auto &each) { return each.get() == data; });
}

} // namespace vellumo
