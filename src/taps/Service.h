// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "taps/ActiveSession.h"
#include "taps/Keyboards.h"
#include "taps/Listeners.h"
#include "taps/LoneAlt.h"

namespace vellumo::taps {

/// Reads keyboards while a client of the user who works at this computer wants their Alt keys, and
/// ends the event loop when it has had no client for a while: it is started again for the next one.
class Service {
public:
    /// `loop`, `bus` and `devices` must outlive this object. `socket` listens. `folder` contains
    /// the input devices.
    Service(sd_event *loop, sd_bus *bus, Descriptor socket, std::string folder,
            const EventDevices &devices);

    /// Returns a negative error code when the service cannot work.
    [[nodiscard]] int start();

private:
    void followLater();
    void follow();
    void report(std::optional<AltEdge> edge);

    sd_event *loop_;
    LoneAlt loneAlt_;
    Listeners listeners_;
    Keyboards keyboards_;
    ActiveSession session_;
    bool isAccepting_ = false;
    Owned<sd_event_source> later_;
    Owned<sd_event_source> idle_;
};

} // namespace vellumo::taps
