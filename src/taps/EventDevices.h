// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

namespace vellumo::taps {

/// What is asked of an open input device beside its events.
class EventDevices {
public:
    EventDevices() = default;
    EventDevices(const EventDevices &) = delete;
    EventDevices &operator=(const EventDevices &) = delete;
    EventDevices(EventDevices &&) = delete;
    EventDevices &operator=(EventDevices &&) = delete;
    virtual ~EventDevices() = default;

    [[nodiscard]] virtual bool isKeyboard(int descriptor) const = 0;

    /// Returns the codes of the keys that are held.
    [[nodiscard]] virtual std::vector<std::uint16_t> heldKeys(int descriptor) const = 0;
};

/// The kernel's devices. A keyboard is what has a left Alt key.
class KernelDevices final : public EventDevices {
public:
    [[nodiscard]] bool isKeyboard(int descriptor) const override;
    [[nodiscard]] std::vector<std::uint16_t> heldKeys(int descriptor) const override;
};

/// Pipes that carry the events of keyboards, of which no key is held at first.
class PipedDevices final : public EventDevices {
public:
    [[nodiscard]] bool isKeyboard(int descriptor) const override;
    [[nodiscard]] std::vector<std::uint16_t> heldKeys(int /*descriptor*/) const override
    {
        return {};
    }
};

} // namespace vellumo::taps
