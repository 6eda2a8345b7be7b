// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/TapSource.h"
#include <QList>
#include <map>
#include <optional>

namespace vellumo {

/// Merges the taps of Option that several sources report, so that one tap counts once. A source is
/// named by any number that is unique to it. The results say whether monitors are to be told.
class TapMerger {
public:
    using Time = TapSource::Time;

    /// A source reports the press of the key. Returns whether it begins a tap.
    [[nodiscard]] bool press(int source, Time at);

    /// A source reports the release. Returns whether it ends a tap that press() began.
    [[nodiscard]] bool release(int source, Time at);

    /// A source that knows no press reports the release of a tap. Returns whether no other source
    /// has reported this tap.
    [[nodiscard]] bool tap(int source, Time at);

private:
    [[nodiscard]] bool isHeld(Time at) const;
    void dropOverdue(Time at);

    std::map<int, Time> held_; ///< when each source reported the press
    std::optional<Time> lastPress_;
    int lastPressSource_ = 0;
    std::optional<Time> lastRelease_;
    std::optional<Time> lastTap_;
    int lastTapSource_ = 0;
    QList<Time> unmatched_; ///< releases whose taps the sources without presses still owe
    bool isTapMatched_ = false; ///< of the key that is held
};

} // namespace vellumo
