// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/OptionTaps.h"

using namespace std::chrono_literals;

namespace vellumo {

namespace {

/// Neither a double tap nor the delay before it is handled takes longer.
constexpr auto maxGap = 500ms;

} // namespace

OptionTaps::OptionTaps(EventMonitoring &events)
    : global_(events.addGlobalMonitor(maskOf(EventType::FlagsChanged),
                                      [this](const Event &event) { note(event); }))
    , local_(events.addLocalMonitor(maskOf(EventType::FlagsChanged), [this](const Event &event) {
        note(event);
        return true;
    }))
{
}

void OptionTaps::note(const Event &event)
{
    if ((event.modifierFlags & ModifierFlag::DeviceIndependentMask) != ModifierFlag::Option) {
        return;
    }
    gap_.reset();
    if (lastAt_) {
        gap_ = std::chrono::milliseconds(event.timestampMs - *lastAt_);
    }
    lastAt_ = event.timestampMs;
    sinceLast_.start();
}

std::optional<std::chrono::milliseconds> OptionTaps::sinceFirst() const
{
    if (!gap_ || *gap_ < 0ms || *gap_ > maxGap || sinceLast_.hasExpired(maxGap.count())) {
        return std::nullopt;
    }
    return *gap_ + std::chrono::milliseconds(sinceLast_.elapsed());
}

} // namespace vellumo
