// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/TapProtocol.h"
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace vellumo::taps {

/// An edge of an Alt key that was pressed alone.
struct AltEdge {
    tapProtocol::Report report;
    std::uint8_t altKey; ///< one bit of tapProtocol::AltKey

    friend bool operator==(const AltEdge &, const AltEdge &) = default;
};

/// Reduces the keys of all keyboards to the edges of a lone Alt. It remembers which modifier keys
/// are held and no other key. Keyboards are named by any number that is unique to them.
class LoneAlt {
public:
    /// Handles an event of a key: its code and value as in `struct input_event`.
    [[nodiscard]] std::optional<AltEdge> handleKey(int keyboard, std::uint16_t code, int value);

    /// Replaces what is known of a keyboard, of which events were missed: it was just opened, has
    /// lost events, or is gone. `held` are the codes of the keys that are held now.
    [[nodiscard]] std::optional<AltEdge> reset(int keyboard, std::span<const std::uint16_t> held);

private:
    using Key = std::pair<int, std::uint16_t>; ///< keyboard and code

    [[nodiscard]] std::optional<AltEdge> end(tapProtocol::Report report);

    std::vector<Key> held_; ///< modifier keys
    std::optional<Key> alt_; ///< whose press was reported and not ended
};

} // namespace vellumo::taps
