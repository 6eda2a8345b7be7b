// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "taps/Handles.h"
#include <functional>
#include <optional>
#include <string>
#include <sys/types.h>

namespace vellumo::taps {

/// Asks the login manager who works at this computer. Signals only trigger a question. While there
/// is no answer, the result is that no user does.
class ActiveSession {
public:
    /// `bus` must outlive this object. `onChange` runs from the event loop after each answer.
    ActiveSession(sd_bus *bus, std::function<void()> onChange);

    /// Asks for the first time. Returns a negative error code when the bus is not usable.
    [[nodiscard]] int start();

    /// Returns the user of the active session on the first seat, unless that session is locked or
    /// shows a login screen.
    [[nodiscard]] std::optional<uid_t> user() const { return user_; }

private:
    void ask();
    void askSession(const char *path);
    void send(sd_bus_message *question, sd_bus_message_handler_t onReply);
    void handleError(sd_bus_message *reply);
    void answer(std::optional<uid_t> user);
    void handleSeat(sd_bus_message *reply);
    void handleSession(sd_bus_message *reply);

    sd_bus *bus_;
    std::function<void()> onChange_;
    Owned<sd_bus_slot> changes_;
    Owned<sd_bus_slot> owners_;
    Owned<sd_bus_slot> question_;
    std::optional<uid_t> user_;
};

} // namespace vellumo::taps
