// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>
#include <QtGlobal>
#include <functional>
#include <memory>

namespace vellumo {

enum class EventType : quint8 {
    LeftMouseDown = 1,
    RightMouseDown = 3,
    MouseMoved = 5,
    KeyDown = 10,
    FlagsChanged = 12,
    ScrollWheel = 22,
};

/// A set of event types; each type is the bit (1 << type).
using EventMask = quint32;

constexpr EventMask maskOf(EventType type)
{
    return EventMask{1} << static_cast<unsigned>(type);
}

/// The events that an open floating panel monitors: presses and scrolling, which close it when they
/// happen elsewhere, and keys among our own events.
namespace PanelEvents {
constexpr EventMask mouseDown =
    maskOf(EventType::LeftMouseDown) | maskOf(EventType::RightMouseDown);
constexpr EventMask scroll = maskOf(EventType::ScrollWheel);
constexpr EventMask local = mouseDown | maskOf(EventType::KeyDown) | scroll;
} // namespace PanelEvents

/// Bits of Event::modifierFlags. Num Lock has none.
namespace ModifierFlag {
constexpr quint32 CapsLock = 0x10000;
constexpr quint32 Shift = 0x20000;
constexpr quint32 Control = 0x40000;
constexpr quint32 Option = 0x80000; ///< Alt, left or right
constexpr quint32 Command = 0x100000; ///< Super
constexpr quint32 AltGr = 0x800000;
constexpr quint32 DeviceIndependentMask = 0xFFFF0000;
} // namespace ModifierFlag

/// Values of Event::keyCode that the program acts on; every other key has the code 0xFFFF.
namespace KeyCode {
constexpr quint16 Escape = 53;
constexpr quint16 Other = 0xFFFF;
} // namespace KeyCode

struct Event {
    EventType type = EventType::FlagsChanged;
    quint32 modifierFlags = 0; ///< for FlagsChanged: the flags after the change
    quint16 keyCode = KeyCode::Other; ///< for KeyDown
    qint64 timestampMs = 0; ///< when the event happened, on the clock of its source
};

/// Owns an installed monitor; destroying it removes the monitor.
class EventMonitorHandle {
public:
    EventMonitorHandle() = default;
    EventMonitorHandle(const EventMonitorHandle &) = delete;
    EventMonitorHandle &operator=(const EventMonitorHandle &) = delete;
    EventMonitorHandle(EventMonitorHandle &&) = delete;
    EventMonitorHandle &operator=(EventMonitorHandle &&) = delete;
    virtual ~EventMonitorHandle() = default;
};

/// Watches input events in the whole session. An event reaches either the local monitors (one of
/// our windows has the keyboard, or for mouse events the pointer) or the global ones, never both.
/// The newest monitor is asked first, and an event that it swallows reaches no older one. Handlers
/// run on the main thread and may add and remove monitors, their own included. Handles may outlive
/// this object.
class EventMonitoring {
public:
    virtual ~EventMonitoring() = default;

    /// Monitors events that go to other applications, which it cannot change. Only FlagsChanged,
    /// mouse and scroll events exist globally. Returns null when the system offers no such monitor.
    [[nodiscard]] virtual std::unique_ptr<EventMonitorHandle>
    addGlobalMonitor(EventMask mask, std::function<void(const Event &)> handler) = 0;

    /// Monitors events on their way to our own windows. The handler returns true to pass the event
    /// on, false to swallow it. Returns null when the monitor cannot be installed.
    [[nodiscard]] virtual std::unique_ptr<EventMonitorHandle>
    addLocalMonitor(EventMask mask, std::function<bool(const Event &)> handler) = 0;

    /// Blocks, without running an event loop, until none of `flags` is held or the deadline has
    /// passed. Returns whether all are released. Events that arrive meanwhile are delivered later.
    virtual bool waitForRelease(quint32 flags, QDeadlineTimer deadline) = 0;
};

} // namespace vellumo
