// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "taps/Service.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>

namespace vellumo::taps {

namespace {

using namespace std::chrono_literals;

/// Long enough that clients which come and go do not make the system refuse another start.
constexpr std::chrono::microseconds idleTime = 30s;

} // namespace

Service::Service(sd_event *loop, sd_bus *bus, Descriptor socket, std::string folder,
                 const EventDevices &devices)
    : loop_(loop)
    , listeners_(loop, std::move(socket), [this] { followLater(); })
    , keyboards_(
          loop, std::move(folder), devices,
          {.onKey = [this](int keyboard, std::uint16_t code,
                           int value) { report(loneAlt_.handleKey(keyboard, code, value)); },
           .onReset = [this](int keyboard, auto held) { report(loneAlt_.reset(keyboard, held)); },
           .onChange = [this] { listeners_.setHearing(keyboards_.hasAny()); }})
    , session_(bus, [this] { followLater(); })
{
}

int Service::start()
{
    sd_event_source *source = nullptr;
    int result = sd_event_add_defer(
        loop_, &source,
        [](sd_event_source *, void *self) {
            static_cast<Service *>(self)->follow();
            return 0;
        },
        this);
    later_.reset(source);
    if (result >= 0) {
        sd_event_source_set_enabled(source, SD_EVENT_OFF);
        // A user who may not hear any more is served before the next key.
        sd_event_source_set_priority(source, SD_EVENT_PRIORITY_IMPORTANT);
        result = sd_event_add_time_relative(
            loop_, &source, CLOCK_MONOTONIC, static_cast<std::uint64_t>(idleTime.count()), 0,
            [](sd_event_source *, std::uint64_t, void *self) {
                return sd_event_exit(static_cast<Service *>(self)->loop_, EXIT_SUCCESS);
            },
            this);
        idle_.reset(source);
    }
    return result >= 0 ? session_.start() : result;
}

/// Collects changes, so that none is handled while another one is.
void Service::followLater()
{
    sd_event_source_set_enabled(later_.get(), SD_EVENT_ONESHOT);
}

void Service::follow()
{
    if (!isAccepting_) { // the first answer about the session
        isAccepting_ = true;
        if (!listeners_.start()) {
            sd_event_exit(loop_, EXIT_FAILURE);
            return;
        }
    }
    listeners_.setUser(session_.user());
    keyboards_.setOpen(listeners_.areWanted());
    if (listeners_.isEmpty()) {
        sd_event_source_set_time_relative(idle_.get(),
                                          static_cast<std::uint64_t>(idleTime.count()));
        sd_event_source_set_enabled(idle_.get(), SD_EVENT_ONESHOT);
    } else {
        sd_event_source_set_enabled(idle_.get(), SD_EVENT_OFF);
    }
}

void Service::report(std::optional<AltEdge> edge)
{
    if (edge) {
        listeners_.report(*edge);
    }
}

} // namespace vellumo::taps
