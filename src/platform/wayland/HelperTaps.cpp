// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/HelperTaps.h"

#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

using tapProtocol::Report;

/// A service that ended is started again by the next connection. One that ends at once is not tried
/// for ever.
constexpr int maxRetries = 6;
constexpr std::chrono::milliseconds firstRetryPause = 500ms;

/// Returns how long ago the kernel took the message over: the main thread may have been busy.
std::chrono::nanoseconds ageOf(msghdr &message)
{
    for (cmsghdr *part = CMSG_FIRSTHDR(&message); part != nullptr;
         part = CMSG_NXTHDR(&message, part)) {
        if (part->cmsg_level == SOL_SOCKET && part->cmsg_type == SCM_TIMESTAMPNS) {
            timespec sent{};
            timespec now{};
            std::memcpy(&sent, CMSG_DATA(part), sizeof(sent));
            ::clock_gettime(CLOCK_REALTIME, &now);
            const auto age = std::chrono::seconds(now.tv_sec - sent.tv_sec)
                + std::chrono::nanoseconds(now.tv_nsec - sent.tv_nsec);
            // that clock may have been set meanwhile
            return age > 0ns && age < 10s ? age : 0ns;
        }
    }
    return 0ns;
}

} // namespace

HelperTaps::HelperTaps(QString socket, std::function<std::uint8_t()> altKeys)
    : path_(std::move(socket))
    , altKeys_(std::move(altKeys))
{
    retry_.setSingleShot(true);
    connect(&retry_, &QTimer::timeout, this, &HelperTaps::open);
}

HelperTaps::~HelperTaps()
{
    close();
}

void HelperTaps::setListening(bool isListening)
{
    if (isListening == (folder_ != nullptr)) {
        return;
    }
    if (!isListening) {
        folder_ = nullptr;
        retry_.stop();
        close();
        return;
    }
    folder_ = std::make_unique<QFileSystemWatcher>(QStringList{QFileInfo(path_).path()});
    connect(folder_.get(), &QFileSystemWatcher::directoryChanged, this, [this] {
        if (socket_ < 0 && !retry_.isActive()) {
            retries_ = 0;
            open();
        }
    });
    retries_ = 0;
    open();
}

/// Does not block: connections to a local socket are made at once or refused.
void HelperTaps::open()
{
    const QByteArray path = QFile::encodeName(path_);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socket_ >= 0 || static_cast<std::size_t>(path.size()) >= sizeof(address.sun_path)) {
        return;
    }
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    socket_ = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (::connect(socket_, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) != 0) {
        const bool isFull = errno == EAGAIN;
        close();
        if (isFull) {
            onLost();
        }
        return;
    }
    constexpr int on = 1;
    ::setsockopt(socket_, SOL_SOCKET, SO_TIMESTAMPNS, &on, sizeof(on));
    const char request = static_cast<char>(tapProtocol::firstRequest + altKeys_());
    ::send(socket_, &request, sizeof(request), MSG_DONTWAIT | MSG_NOSIGNAL);
    readable_ = std::make_unique<QSocketNotifier>(socket_, QSocketNotifier::Read);
    connect(readable_.get(), &QSocketNotifier::activated, this, &HelperTaps::onReadable);
}

void HelperTaps::close()
{
    if (readable_) {
        readable_->setEnabled(false);
        readable_.release()->deleteLater(); // may be the sender
    }
    if (socket_ >= 0) {
        ::close(std::exchange(socket_, -1));
    }
    arrived_.clear();
    isHeld_ = false;
    endPress(std::chrono::steady_clock::now());
    setHearing(false);
}

void HelperTaps::onLost()
{
    close();
    if (folder_ && retries_ < maxRetries) {
        retry_.start(firstRetryPause * (1 << retries_));
        ++retries_;
    }
}

void HelperTaps::onReadable()
{
    const bool isOpen = receive();
    deliver();
    if (!isOpen) {
        onLost();
    }
}

/// Takes what has arrived. Returns false at the end of the connection.
bool HelperTaps::receive()
{
    while (true) {
        char report = 0;
        iovec part{&report, sizeof(report)};
        alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(timespec))> control{};
        msghdr message{};
        message.msg_iov = &part;
        message.msg_iovlen = 1;
        message.msg_control = control.data();
        message.msg_controllen = control.size();
        const auto length = ::recvmsg(socket_, &message, MSG_DONTWAIT);
        if (length < 0 && errno == EINTR) {
            continue;
        }
        if (length <= 0) {
            return length < 0 && errno == EAGAIN;
        }
        const auto kind = static_cast<Report>(report);
        isHeld_ = kind == Report::Pressed;
        const auto age = std::chrono::duration_cast<Time::duration>(ageOf(message));
        arrived_.append({kind, std::chrono::steady_clock::now() - age});
    }
}

void HelperTaps::deliver()
{
    while (!arrived_.isEmpty()) {
        handle(arrived_.takeFirst());
    }
}

void HelperTaps::handle(const Arrived &arrived)
{
    switch (arrived.report) {
    case Report::Listening:
        retries_ = 0;
        setHearing(true);
        break;
    case Report::Silent:
        endPress(arrived.at);
        setHearing(false);
        break;
    case Report::Pressed:
        pressedAt_ = arrived.at;
        isReported_ = wasTap_;
        if (isReported_) {
            Q_EMIT pressed(arrived.at);
        }
        break;
    case Report::Released:
        if (pressedAt_ && !isReported_) {
            isReported_ = true;
            Q_EMIT pressed(*pressedAt_);
        }
        wasTap_ = pressedAt_.has_value();
        if (pressedAt_) {
            pressedAt_ = std::nullopt;
            Q_EMIT released(arrived.at);
        }
        break;
    case Report::Interrupted:
        endPress(arrived.at);
        break;
    }
}

/// Ends a press that is no tap.
void HelperTaps::endPress(Time at)
{
    wasTap_ = false;
    if (std::exchange(pressedAt_, std::nullopt) && isReported_) {
        Q_EMIT released(at);
    }
}

void HelperTaps::setHearing(bool isHearing)
{
    if (std::exchange(isHearing_, isHearing) != isHearing) {
        Q_EMIT reachChanged();
    }
}

bool HelperTaps::waitForRelease(QDeadlineTimer deadline)
{
    if (socket_ < 0) {
        return true;
    }
    bool isOpen = receive();
    while (isOpen && isHeld_ && !deadline.hasExpired()) {
        pollfd readable{socket_, POLLIN, 0};
        ::poll(&readable, 1, static_cast<int>(deadline.remainingTime()));
        isOpen = receive();
    }
    if (!arrived_.isEmpty()) {
        QMetaObject::invokeMethod(this, &HelperTaps::deliver, Qt::QueuedConnection);
    }
    return !isOpen || !isHeld_;
}

} // namespace vellumo
