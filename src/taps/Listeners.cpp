// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "taps/Listeners.h"

#include <algorithm>
#include <cerrno>
#include <sys/socket.h>

namespace vellumo::taps {

namespace {

using tapProtocol::Report;

/// A user runs one vellumo in a session.
constexpr auto maxClientsOfUser = 4;
/// The user of the active session is always accepted beside the others.
constexpr auto maxOtherClients = 32;

/// In bytes, room for about ten reports: a client may be busy for a moment, but one that does not
/// read is to be noticed soon.
constexpr int sendBuffer = 4096;

} // namespace

Listeners::Listeners(sd_event *loop, Descriptor socket, std::function<void()> onChange)
    : loop_(loop)
    , socket_(std::move(socket))
    , onChange_(std::move(onChange))
{
}

bool Listeners::start()
{
    sd_event_source *source = nullptr;
    const int result = sd_event_add_io(
        loop_, &source, socket_.number(), EPOLLIN,
        [](sd_event_source *, int, std::uint32_t, void *self) {
            static_cast<Listeners *>(self)->accept();
            return 0;
        },
        this);
    source_.reset(source);
    return result >= 0;
}

bool Listeners::mayJoin(uid_t user) const
{
    const auto ofUser = std::ranges::count(clients_, user, &Client::user);
    const auto others = std::ranges::count_if(
        clients_, [this](const Client &client) { return client.user != user_; });
    return ofUser < maxClientsOfUser && (user == user_ || others < maxOtherClients);
}

void Listeners::accept()
{
    Descriptor connection(
        ::accept4(socket_.number(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    ucred peer{};
    socklen_t size = sizeof(peer);
    if (!connection.isOpen()
        || ::getsockopt(connection.number(), SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0
        || !mayJoin(peer.uid)) {
        return;
    }
    ::setsockopt(connection.number(), SOL_SOCKET, SO_SNDBUF, &sendBuffer, sizeof(sendBuffer));
    Client &client = clients_.emplace_back(
        Client{*this, std::move(connection), peer.uid, std::nullopt, false, nullptr});
    sd_event_source *source = nullptr;
    sd_event_add_io(
        loop_, &source, client.connection.number(), EPOLLIN,
        [](sd_event_source *, int, std::uint32_t, void *readable) {
            auto &self = *static_cast<Client *>(readable);
            self.owner.read(self);
            return 0;
        },
        &client);
    client.source.reset(source);
    if (source == nullptr) {
        clients_.pop_back();
    }
    onChange_();
}

/// A client sends one request; anything else, and the end of the connection, drops it.
void Listeners::read(Client &client)
{
    char request = 0;
    const auto length =
        ::recv(client.connection.number(), &request, sizeof(request), MSG_DONTWAIT | MSG_TRUNC);
    if (length < 0 && (errno == EAGAIN || errno == EINTR)) {
        return;
    }
    const int altKeys = request - tapProtocol::firstRequest;
    if (length == 1 && !client.altKeys && altKeys >= 0 && altKeys <= tapProtocol::allKeys) {
        client.altKeys = static_cast<std::uint8_t>(altKeys);
        update();
    } else {
        drop(client);
    }
    onChange_();
}

void Listeners::drop(const Client &client)
{
    clients_.remove_if([&client](const Client &other) { return &other == &client; });
}

bool Listeners::isEntitled(const Client &client) const
{
    return user_ && client.user == *user_ && client.altKeys.value_or(0) != 0;
}

bool Listeners::areWanted() const
{
    return std::ranges::any_of(clients_,
                               [this](const Client &client) { return isEntitled(client); });
}

void Listeners::setUser(std::optional<uid_t> user)
{
    if (user != user_) {
        user_ = user;
        update();
        onChange_();
    }
}

void Listeners::setHearing(bool isHearing)
{
    if (isHearing != isHearing_) {
        isHearing_ = isHearing;
        update();
    }
}

/// Reports to each client whether it is listening now.
void Listeners::update()
{
    const auto dropped = clients_.remove_if([this](Client &client) {
        const bool isListening = isHearing_ && isEntitled(client);
        if (isListening == client.isListening) {
            return false;
        }
        client.isListening = isListening;
        return !send(client, isListening ? Report::Listening : Report::Silent);
    });
    if (dropped > 0) {
        onChange_();
    }
}

void Listeners::report(const AltEdge &edge)
{
    const auto dropped = clients_.remove_if([&edge](const Client &client) {
        const bool hears = client.isListening && (*client.altKeys & edge.altKey) != 0;
        return hears && !send(client, edge.report);
    });
    if (dropped > 0) {
        onChange_();
    }
}

/// Returns whether the client has taken the report, or room for it.
bool Listeners::send(const Client &client, Report report)
{
    const char message = static_cast<char>(report);
    return ::send(client.connection.number(), &message, sizeof(message),
                  MSG_DONTWAIT | MSG_NOSIGNAL)
        == sizeof(message);
}

} // namespace vellumo::taps
