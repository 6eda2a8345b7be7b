// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/DailyUpdates.h"

#include "platform/Clock.h"
#include "settings/SettingsKeys.h"

using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto afterStart = 1min;
constexpr auto betweenLooks = 1h; // whether a day has passed, also while the computer slept
constexpr double secondsOfADay = 86400;

} // namespace

DailyUpdates::DailyUpdates(UpdateControlling &controller, DefaultsStore &defaults, Clock &clock,
                           QObject *parent)
    : QObject(parent)
    , controller_(controller)
    , defaults_(defaults)
    , clock_(clock)
{
    connect(&defaults_, &DefaultsStore::changed, this, [this](const QString &key) {
        if (key == settings::looksForUpdates.name) {
            follow();
        }
    });
    follow();
}

bool DailyUpdates::isAgreed() const
{
    return settings::looksForUpdates.value(defaults_);
}

void DailyUpdates::follow()
{
    if (isAgreed() && !std::exchange(isWaiting_, true)) {
        clock_.after(afterStart, this, [this] { look(); });
    }
}

void DailyUpdates::look()
{
    isWaiting_ = isAgreed();
    if (!isWaiting_) {
        return;
    }
    const double now = clock_.secondsSinceReferenceDate();
    const double last = settings::lookedForUpdates.value(defaults_);
    if (last > now || now - last >= secondsOfADay) { // a clock may have been put back
        settings::lookedForUpdates.set(defaults_, now);
        controller_.checkInBackground();
    }
    clock_.after(betweenLooks, this, [this] { look(); });
}

} // namespace vellumo
