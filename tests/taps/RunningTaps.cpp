// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "taps/RunningTaps.h"

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/input.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

sockaddr_un addressOf(const QString &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = QFile::encodeName(path);
    std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    return address;
}

} // namespace

RunningTaps::RunningTaps()
{
    QDir(folder_.path()).mkdir(u"input"_s);
}

RunningTaps::~RunningTaps()
{
    kill();
    ::close(socket_);
}

void RunningTaps::listen()
{
    const sockaddr_un address = addressOf(socketPath());
    socket_ = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    ::bind(socket_, reinterpret_cast<const sockaddr *>(&address), sizeof(address));
    ::listen(socket_, 8);
}

bool RunningTaps::openToEveryUser()
{
    constexpr mode_t all = S_IRWXU | S_IRWXG | S_IRWXO;
    return ::chmod(QFile::encodeName(folder_.path()).constData(), all) == 0
        && ::chmod(QFile::encodeName(socketPath()).constData(), all) == 0;
}

bool RunningTaps::start()
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SYSTEM_BUS_ADDRESS"_s,
                       environment.value(u"DBUS_SESSION_BUS_ADDRESS"_s));
    environment.insert(u"LISTEN_FDS"_s, u"1"_s);
    process_.setProcessEnvironment(environment);
    process_.setProcessChannelMode(QProcess::ForwardedChannels);
    constexpr int firstPassed = 3;
    process_.setChildProcessModifier([this] { ::dup2(socket_, firstPassed); });
    process_.start(u"/bin/sh"_s,
                   {u"-c"_s, u"LISTEN_PID=$$ exec \"$0\" --pipes \"$1\""_s,
                    QStringLiteral(VELLUMO_TAPS_PROGRAM), folder_.filePath(u"input"_s)});
    return process_.waitForStarted();
}

void RunningTaps::kill()
{
    process_.kill();
    process_.waitForFinished();
}

PipedKeyboard::PipedKeyboard(const QString &path) : path_(QFile::encodeName(path))
{
    ::mkfifo(path_.constData(), S_IRUSR | S_IWUSR);
}

PipedKeyboard::~PipedKeyboard()
{
    unplug();
}

bool PipedKeyboard::isRead()
{
    if (pipe_ < 0) {
        pipe_ = ::open(path_.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        return pipe_ >= 0;
    }
    // An event that means nothing; it fails without a reader.
    input_event nothing{};
    if (::write(pipe_, &nothing, sizeof(nothing)) > 0) {
        return true;
    }
    ::close(std::exchange(pipe_, -1));
    return false;
}

void PipedKeyboard::sendEvent(std::uint16_t type, std::uint16_t code, int value)
{
    input_event event{};
    event.type = type;
    event.code = code;
    event.value = value;
    Q_ASSERT(pipe_ >= 0);
    [[maybe_unused]] const auto written = ::write(pipe_, &event, sizeof(event));
}

void PipedKeyboard::send(std::uint16_t code, int value)
{
    sendEvent(EV_KEY, code, value);
    sendEvent(EV_SYN, SYN_REPORT, 0);
}

void PipedKeyboard::tapAlt()
{
    send(KEY_LEFTALT, 1);
    send(KEY_LEFTALT, 0);
}

void PipedKeyboard::unplug()
{
    ::unlink(path_.constData());
    if (pipe_ >= 0) {
        ::close(std::exchange(pipe_, -1));
    }
}

TapsClient::TapsClient(const QString &socketPath, const QByteArray &request)
    : socket_(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
{
    const sockaddr_un address = addressOf(socketPath);
    isOpen_ =
        ::connect(socket_, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) == 0;
    if (!request.isEmpty()) {
        ::send(socket_, request.constData(), static_cast<std::size_t>(request.size()),
               MSG_NOSIGNAL);
    }
}

TapsClient::~TapsClient()
{
    ::close(socket_);
}

QByteArray TapsClient::heard()
{
    char report = 0;
    ssize_t length = 0;
    while (isOpen_ && (length = ::recv(socket_, &report, sizeof(report), 0)) > 0) {
        heard_ += report;
    }
    isOpen_ = isOpen_ && length < 0 && errno == EAGAIN;
    return isOpen_ ? heard_ : heard_ + '.';
}

} // namespace vellumo
