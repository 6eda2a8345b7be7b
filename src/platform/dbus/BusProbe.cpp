// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/dbus/BusProbe.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QList>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace vellumo {

namespace {

/// Returns the bus's socket name for sockaddr_un; an abstract one begins with a zero.
QByteArray socketName()
{
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    if (address.isEmpty()) {
        return qgetenv("XDG_RUNTIME_DIR") + "/bus";
    }
    const QByteArray first = address.split(';').first();
    if (!first.startsWith("unix:")) {
        return {};
    }
    const QList<QByteArray> settings = first.mid(5).split(',');
    for (const QByteArray &setting : settings) {
        if (setting.startsWith("path=")) {
            return QByteArray::fromPercentEncoding(setting.mid(5));
        }
        if (setting.startsWith("abstract=")) {
            return '\0' + QByteArray::fromPercentEncoding(setting.mid(9));
        }
    }
    return {};
}

class Socket {
public:
    Socket() : fd_(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) { }
    ~Socket() { ::close(fd_); }
    Q_DISABLE_COPY_MOVE(Socket)

    [[nodiscard]] int fd() const { return fd_; }

private:
    int fd_;
};

} // namespace

bool isSessionBusResponsive(std::chrono::milliseconds timeout)
{
    const QByteArray name = socketName();
    sockaddr_un address{};
    if (name.isEmpty() || static_cast<size_t>(name.size()) >= sizeof(address.sun_path)) {
        return true;
    }
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.constData(), static_cast<size_t>(name.size()));
    const auto length =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<size_t>(name.size()));
    const Socket socket;
    if (::connect(socket.fd(), reinterpret_cast<const sockaddr *>(&address), length) != 0) {
        // Its queue is full; any other failure is immediate for every client.
        return errno != EAGAIN;
    }
    const QByteArray hello =
        QByteArray(1, '\0') + "AUTH EXTERNAL " + QByteArray::number(::geteuid()).toHex() + "\r\n";
    if (::send(socket.fd(), hello.constData(), static_cast<size_t>(hello.size()), MSG_NOSIGNAL)
        != hello.size()) {
        return true;
    }
    const QDeadlineTimer deadline(timeout);
    pollfd waiting{socket.fd(), POLLIN, 0};
    int ready = 0;
    do {
        ready = ::poll(&waiting, 1, static_cast<int>(deadline.remainingTime()));
    } while (ready < 0 && errno == EINTR);
    return ready != 0;
}

} // namespace vellumo
