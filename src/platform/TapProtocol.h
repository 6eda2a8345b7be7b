// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// What `vellumo-taps` and vellumo exchange over a socket that keeps the bounds of messages
/// (SOCK_SEQPACKET). Each message is one byte. Includes nothing of Qt.
namespace vellumo::tapProtocol {

constexpr auto socketPath = "/run/vellumo-taps.sock";

/// From the service. Presses and releases are those of an Alt key that was requested.
enum class Report : char {
    Listening = 'l', ///< a keyboard is read for this client
    Silent = 'n', ///< no keyboard is read for it any more; also ends a press
    Pressed = 'd', ///< Alt was pressed while no other modifier key was held
    Released = 'u', ///< it was released, and no key was pressed meanwhile
    Interrupted = 'x', ///< a key was pressed meanwhile; the release is not reported
};

/// Bits of the Alt keys that a client requests.
namespace AltKey {
constexpr std::uint8_t Left = 1;
constexpr std::uint8_t Right = 2; ///< on many keyboards another modifier, AltGr
} // namespace AltKey

/// The only message to the service, sent once: `firstRequest` plus the bits of the Alt keys.
constexpr char firstRequest = '0';
constexpr std::uint8_t allKeys = AltKey::Left | AltKey::Right;

} // namespace vellumo::tapProtocol
