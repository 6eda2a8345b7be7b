// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/TriggerManager.h"

#include <utility>

namespace vellumo {

TriggerManager::TriggerManager(EventMonitoring &events, QObject *parent)
    : QObject(parent)
    , events_(events)
{
    hold_.setSingleShot(true);
    hold_.setInterval(holdTime);
    connect(&hold_, &QTimer::timeout, this, [this] {
        if (onOptionHeld) {
            onOptionHeld();
        }
    });
}

void TriggerManager::start()
{
    stop();
    constexpr EventMask mask = maskOf(EventType::FlagsChanged);
    eventMonitor_ =
        events_.addGlobalMonitor(mask, [this](const Event &event) { handleLater(event); });
    localEventMonitor_ = events_.addLocalMonitor(mask, [this](const Event &event) {
        handleLater(event);
        return true;
    });
}

void TriggerManager::stop()
{
    eventMonitor_.reset();
    localEventMonitor_.reset();
    lastOptionTapAt_.reset();
    pressedAt_.reset();
    hold_.stop();
}

void TriggerManager::handleLater(const Event &event)
{
    QMetaObject::invokeMethod(
        this, [this, event] { handleFlagsChanged(event); }, Qt::QueuedConnection);
}

void TriggerManager::handleFlagsChanged(const Event &event)
{
    const bool isOptionAlone =
        (event.modifierFlags & ModifierFlag::DeviceIndependentMask) == ModifierFlag::Option;
    hold_.stop();
    if (!isOptionAlone) {
        if (const auto pressedAt = std::exchange(pressedAt_, std::nullopt)) {
            knowsHolding_ = event.timestampMs != *pressedAt;
        }
        return;
    }
    pressedAt_ = event.timestampMs;
    const std::chrono::milliseconds now(event.timestampMs);
    if (lastOptionTapAt_ && now - *lastOptionTapAt_ <= doubleTapInterval) {
        lastOptionTapAt_.reset();
        hold_.start();
        if (onDoubleTapOption) {
            onDoubleTapOption();
        }
        return;
    }
    lastOptionTapAt_ = now;
}

} // namespace vellumo
