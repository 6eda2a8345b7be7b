// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "taps/LoneAlt.h"

#include <algorithm>
#include <array>
#include <linux/input-event-codes.h>

namespace vellumo::taps {

namespace {

using tapProtocol::Report;

/// Keys that make a combination with Alt. Caps Lock is another modifier in many layouts.
constexpr std::array<std::uint16_t, 9> modifiers{KEY_LEFTALT,   KEY_RIGHTALT,  KEY_LEFTCTRL,
                                                 KEY_RIGHTCTRL, KEY_LEFTSHIFT, KEY_RIGHTSHIFT,
                                                 KEY_LEFTMETA,  KEY_RIGHTMETA, KEY_CAPSLOCK};

bool isModifier(std::uint16_t code)
{
    return std::ranges::find(modifiers, code) != modifiers.end();
}

/// Buttons of pointers and joysticks, which some keyboards have too.
bool isButton(std::uint16_t code)
{
    return code >= BTN_MISC && code < KEY_OK;
}

std::uint8_t altKeyOf(std::uint16_t code)
{
    return code == KEY_LEFTALT ? tapProtocol::AltKey::Left
        : code == KEY_RIGHTALT ? tapProtocol::AltKey::Right
                               : 0;
}

} // namespace

std::optional<AltEdge> LoneAlt::end(Report report)
{
    const auto alt = std::exchange(alt_, std::nullopt);
    return alt ? std::optional(AltEdge{report, altKeyOf(alt->second)}) : std::nullopt;
}

std::optional<AltEdge> LoneAlt::handleKey(int keyboard, std::uint16_t code, int value)
{
    constexpr int released = 0;
    constexpr int pressed = 1; // repeats have another value
    const Key key(keyboard, code);
    if (value == released) {
        std::erase(held_, key);
        return alt_ == key ? end(Report::Released) : std::nullopt;
    }
    if (value != pressed || isButton(code)) {
        return std::nullopt;
    }
    const bool isAlone = held_.empty();
    if (isModifier(code)) {
        held_.push_back(key);
    }
    if (alt_) {
        return end(Report::Interrupted);
    }
    if (!isAlone || altKeyOf(code) == 0) {
        return std::nullopt;
    }
    alt_ = key;
    return AltEdge{Report::Pressed, altKeyOf(code)};
}

std::optional<AltEdge> LoneAlt::reset(int keyboard, std::span<const std::uint16_t> held)
{
    std::erase_if(held_, [keyboard](const Key &key) { return key.first == keyboard; });
    for (const std::uint16_t code : held) {
        if (isModifier(code)) {
            held_.emplace_back(keyboard, code);
        }
    }
    return alt_ && alt_->first == keyboard ? end(Report::Interrupted) : std::nullopt;
}

} // namespace vellumo::taps
