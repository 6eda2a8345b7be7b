// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>
#include <unistd.h>
#include <utility>

namespace vellumo::taps {

/// Owns a file descriptor.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) { }
    Descriptor(Descriptor &&other) noexcept : number_(std::exchange(other.number_, -1)) { }
    Descriptor &operator=(Descriptor &&other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    ~Descriptor()
    {
        if (isOpen()) {
            ::close(number_);
        }
    }

    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    [[nodiscard]] int number() const { return number_; }

private:
    int number_ = -1;
};

/// Frees an object of libsystemd.
struct Unreference {
    void operator()(sd_event *loop) const { sd_event_unref(loop); }
    void operator()(sd_event_source *source) const { sd_event_source_disable_unref(source); }
    void operator()(sd_bus *bus) const { sd_bus_close_unref(bus); }
    void operator()(sd_bus_slot *slot) const { sd_bus_slot_unref(slot); }
};

template <typename T> using Owned = std::unique_ptr<T, Unreference>;

} // namespace vellumo::taps
