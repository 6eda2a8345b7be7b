// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "taps/Handles.h"
#include "taps/LoneAlt.h"
#include <cstdint>
#include <functional>
#include <list>
#include <optional>
#include <sys/types.h>

namespace vellumo::taps {

/// The clients of the service. Only those that run as the user of the active session hear anything;
/// others may wait until they do. A client that does not read is dropped.
class Listeners {
public:
    /// `loop` must outlive this object. `socket` listens. `onChange` runs when
    /// areWanted() or isEmpty() may have changed; it calls nothing of this object.
    Listeners(sd_event *loop, Descriptor socket, std::function<void()> onChange);

    /// Accepts clients. To be called once, when the user is known. Returns whether it succeeded.
    [[nodiscard]] bool start();

    void setUser(std::optional<uid_t> user);

    /// Sets whether there are keyboards that are read.
    void setHearing(bool isHearing);

    void report(const AltEdge &edge);

    /// Returns whether a client of the user has requested an Alt key.
    [[nodiscard]] bool areWanted() const;
    [[nodiscard]] bool isEmpty() const { return clients_.empty(); }

private:
    struct Client {
        Listeners &owner;
        Descriptor connection;
        uid_t user;
        std::optional<std::uint8_t> altKeys; ///< requested
        bool isListening; ///< as reported to the client
        Owned<sd_event_source> source;
    };

    void accept();
    void read(Client &client);
    void drop(const Client &client);
    void update();
    [[nodiscard]] bool mayJoin(uid_t user) const;
    [[nodiscard]] bool isEntitled(const Client &client) const;
    [[nodiscard]] static bool send(const Client &client, tapProtocol::Report report);

    sd_event *loop_;
    Descriptor socket_;
    std::function<void()> onChange_;
    std::list<Client> clients_;
    std::optional<uid_t> user_;
    bool isHearing_ = false;
    Owned<sd_event_source> source_;
};

} // namespace vellumo::taps
