// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/shortcuts/ChosenChange.h"

#include <algorithm>
#include <utility>

namespace vellumo {

ChosenChange::ChosenChange(QList<DesktopChange *> ways) : ways_(std::move(ways))
{
    for (DesktopChange *way : std::as_const(ways_)) {
        connect(way, &DesktopChange::changed, this, &DesktopChange::changed);
        connect(way, &DesktopChange::finished, this, &DesktopChange::finished);
    }
}

void ChosenChange::refresh()
{
    for (DesktopChange *way : std::as_const(ways_)) {
        way->refresh();
    }
}

DesktopChange &ChosenChange::chosen() const
{
    // One that is not known yet may turn out to be available.
    const auto with = [this](auto condition) {
        return std::ranges::find_if(
            ways_, [condition](const DesktopChange *way) { return condition(way->state()); });
    };
    auto found =
        with([](State state) { return state != State::Unknown && state != State::Unavailable; });
    if (found == ways_.end()) {
        found = with([](State state) { return state == State::Unknown; });
    }
    return found == ways_.end() ? *ways_.constFirst() : **found;
}

} // namespace vellumo
