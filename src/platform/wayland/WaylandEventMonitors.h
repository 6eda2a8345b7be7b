// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/EventMonitoring.h"
#include "platform/TapSource.h"
#include "platform/wayland/TapMerger.h"
#include <QList>
#include <QObject>
#include <QPointer>
#include <QWindow>
#include <chrono>
#include <optional>

namespace vellumo {

class MonitorList;
class X11EventMonitors;

/// Input events of a Wayland session: those that XWayland sees, and the taps of Option that other
/// sources report. Where presses in other programs' windows are not reported, the loss of the
/// keyboard counts as one. Event times are on the steady clock.
class WaylandEventMonitors : public QObject, public EventMonitoring {
    Q_OBJECT

public:
    /// `x11` must outlive this object.
    explicit WaylandEventMonitors(X11EventMonitors &x11);
    ~WaylandEventMonitors() override;
    Q_DISABLE_COPY_MOVE(WaylandEventMonitors)

    /// Listens to a source, which must outlive this object.
    void add(TapSource &source);

    /// Returns whether a source reports taps in every window now.
    [[nodiscard]] bool hearsEveryWindow() const;

    [[nodiscard]] std::unique_ptr<EventMonitorHandle>
    addGlobalMonitor(EventMask mask, std::function<void(const Event &)> handler) override;
    [[nodiscard]] std::unique_ptr<EventMonitorHandle>
    addLocalMonitor(EventMask mask, std::function<bool(const Event &)> handler) override;
    bool waitForRelease(quint32 flags, QDeadlineTimer deadline) override;

Q_SIGNALS:
    /// Emitted when hearsEveryWindow() may have changed.
    void reachChanged();

private:
    void handleFocus(QWindow *window);
    void handleX11(const Event &event, MonitorList &monitors);
    void deliver(quint32 flags, TapSource::Time at);
    [[nodiscard]] TapSource::Time timeOf(const Event &event);

    X11EventMonitors &x11_;
    QPointer<QWindow> focus_; ///< our window that has the keyboard
    std::shared_ptr<MonitorList> global_; ///< of changed flags
    std::shared_ptr<MonitorList> elsewhere_; ///< of presses
    std::shared_ptr<MonitorList> local_;
    std::unique_ptr<EventMonitorHandle> x11Global_;
    std::unique_ptr<EventMonitorHandle> x11Local_;
    QList<TapSource *> sources_;
    TapMerger merger_;
    std::optional<std::chrono::milliseconds> clockDistance_; ///< from the server's clock to ours
};

} // namespace vellumo
