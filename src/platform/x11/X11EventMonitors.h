// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/EventMonitoring.h"
#include "platform/x11/ServerTime.h"
#include <QList>
#include <QObject>
#include <functional>
#include <memory>
#include <utility>
#include <xcb/xcb.h>

namespace vellumo {

class MonitorList;
class X11Connection;
class X11Problems;

/// Monitors modifier keys through state notifications of the keyboard extension, which arrive
/// without focus and during grabs and do not include other keys, and mouse buttons through raw
/// events of the input extension, which are selected only while a monitor needs them. Events of our
/// own windows are taken from Qt.
class X11EventMonitors : public QObject, public EventMonitoring {
    Q_OBJECT

public:
    /// `connection` must outlive this object and have no other event handler.
    X11EventMonitors(X11Connection &connection, X11Problems &problems);
    ~X11EventMonitors() override;
    Q_DISABLE_COPY_MOVE(X11EventMonitors)

    [[nodiscard]] std::unique_ptr<EventMonitorHandle>
    addGlobalMonitor(EventMask mask, std::function<void(const Event &)> handler) override;
    [[nodiscard]] std::unique_ptr<EventMonitorHandle>
    addLocalMonitor(EventMask mask, std::function<bool(const Event &)> handler) override;
    bool waitForRelease(quint32 flags, QDeadlineTimer deadline) override;
    /// Returns whether waitForRelease() can succeed: there is a server that reports modifiers.
    [[nodiscard]] bool knowsModifiers() const { return xkbEvent_ != 0; }

    /// Runs `post`, which may send synthetic keys on this object's connection, and blocks until the
    /// server has processed them. Flag changes caused by them reach no monitor, however late they
    /// are processed, but later changes are relative to them. Returns false when the server did not
    /// answer.
    bool withoutMonitors(const std::function<void(X11Connection &)> &post);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void watchKeyboard(X11Problems &problems);
    void watchButtons(X11Problems &problems);
    void monitorsChanged();
    void handleEvent(const xcb_generic_event_t &event);
    void handleState(const xcb_generic_event_t &event);
    void handleRawButton(const xcb_generic_event_t &event);
    [[nodiscard]] bool isStateNotify(const xcb_generic_event_t &event) const;
    [[nodiscard]] bool isOwnDoing(quint32 sequence);
    [[nodiscard]] bool isPointerOverOwnWindow();

    X11Connection &connection_;
    std::shared_ptr<MonitorList> global_;
    std::shared_ptr<MonitorList> local_;
    ServerTime time_;
    quint32 flags_ = 0; ///< after the last processed state change
    quint8 xkbEvent_ = 0; ///< 0 without the extension, as xinputOpcode_
    quint8 xinputOpcode_ = 0;
    bool buttonsSelected_ = false;
    QList<std::pair<quint32, quint32>> ownRequests_; ///< request numbers [first, end) of our keys
};

} // namespace vellumo
