// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "taps/EventDevices.h"
#include "taps/Handles.h"
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <utility>

struct input_event;

namespace vellumo::taps {

/// Reads the keyboards in the folder of input devices, also those that are plugged in later. While
/// closed, no device is open. The handlers run from the event loop or from setOpen(), which they do
/// not call.
class Keyboards {
public:
    struct Handlers {
        std::function<void(int keyboard, std::uint16_t code, int value)> onKey;
        /// Events were missed: see LoneAlt::reset().
        std::function<void(int keyboard, std::span<const std::uint16_t> held)> onReset;
        /// A keyboard was opened or closed.
        std::function<void()> onChange;
    };

    /// `loop` and `devices` must outlive this object.
    Keyboards(sd_event *loop, std::string folder, const EventDevices &devices, Handlers handlers);

    void setOpen(bool isOpen);
    [[nodiscard]] bool hasAny() const { return !keyboards_.empty(); }

private:
    struct Keyboard {
        Keyboard(Keyboards &opener, std::string fileName, int id, Descriptor opened)
            : owner(opener)
            , name(std::move(fileName))
            , number(id)
            , device(std::move(opened))
        {
        }

        Keyboards &owner;
        std::string name; ///< in the folder
        int number;
        Descriptor device;
        Owned<sd_event_source> source;
        bool isDropping = false; ///< until the end of a report of which events were lost
    };

    void watchFolder();
    void readFolder();
    void readChanges();
    void open(const std::string &name);
    void close(const std::string &name);
    void read(Keyboard &keyboard);
    void handle(Keyboard &keyboard, const input_event &event);

    sd_event *loop_;
    std::string folder_;
    const EventDevices &devices_;
    Handlers handlers_;
    Descriptor changes_; ///< of the folder
    Owned<sd_event_source> changesSource_;
    std::map<std::string, std::unique_ptr<Keyboard>> keyboards_; ///< by name
    int lastNumber_ = 0;
};

} // namespace vellumo::taps
