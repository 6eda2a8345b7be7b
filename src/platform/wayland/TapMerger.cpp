// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/TapMerger.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

/// Maximum delay between two sources' reports of the same event.
constexpr auto sameEvent = 30ms;

/// Maximum delay of a tap that is reported without its time, as KWin does, while this process or
/// the bus is busy.
constexpr auto maxReportDelay = 400ms;

/// A key that is held longer is not tapped: its release was not reported, for example because the
/// application that had the keyboard has ended.
constexpr auto maxHold = 1500ms;

bool isWithin(const std::optional<TapSource::Time> &earlier, TapSource::Time at)
{
    return earlier && at - *earlier < sameEvent;
}

} // namespace

bool TapMerger::isHeld(Time at) const
{
    return std::ranges::any_of(held_,
                               [at](const auto &hold) { return at - hold.second < maxHold; });
}

bool TapMerger::press(int source, Time at)
{
    const bool isKnown = isHeld(at) || isWithin(lastTap_, at)
        || (source != lastPressSource_ && isWithin(lastPress_, at));
    held_[source] = at;
    if (!isKnown) {
        isTapMatched_ = false;
        lastPress_ = at;
        lastPressSource_ = source;
    }
    return !isKnown;
}

bool TapMerger::release(int source, Time at)
{
    const bool wasHeld = held_.erase(source) > 0;
    lastRelease_ = at;
    const bool endsTap = wasHeld && !isHeld(at);
    dropOverdue(at); // there may be no source that reports taps
    if (endsTap && !std::exchange(isTapMatched_, false)) {
        unmatched_.append(at);
    }
    return endsTap;
}

void TapMerger::dropOverdue(Time at)
{
    unmatched_.removeIf([at](Time release) { return at - release > maxReportDelay; });
}

bool TapMerger::tap(int source, Time at)
{
    dropOverdue(at);
    if (isHeld(at)) {
        isTapMatched_ = true;
        return false;
    }
    if (!unmatched_.isEmpty()) {
        unmatched_.removeFirst();
        return false;
    }
    // A busy process reads both taps of one source at once.
    const bool isKnown = source != lastTapSource_ && isWithin(lastTap_, at);
    if (isWithin(lastRelease_, at) || isKnown) {
        return false;
    }
    lastTap_ = at;
    lastTapSource_ = source;
    return true;
}

} // namespace vellumo
