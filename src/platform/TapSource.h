// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <chrono>

namespace vellumo {

/// Reports Option (Alt) pressed alone where the X server does not see it. Times are those of the
/// key on the steady clock. Main thread only.
class TapSource : public QObject {
    Q_OBJECT

public:
    using Time = std::chrono::steady_clock::time_point;
    using QObject::QObject;

    /// Blocks, without running an event loop, until the key is known to be released or the deadline
    /// has passed. Returns whether it is released.
    virtual bool waitForRelease(QDeadlineTimer /*deadline*/) { return true; }

    /// Returns whether taps in every window are reported now.
    [[nodiscard]] virtual bool hearsEveryWindow() const { return false; }

Q_SIGNALS:
    void pressed(vellumo::TapSource::Time at);
    void released(vellumo::TapSource::Time at);

    /// Emitted by sources that report only the release of a key that was pressed alone.
    void tapped(vellumo::TapSource::Time at);

    /// Emitted when hearsEveryWindow() has changed.
    void reachChanged();
};

} // namespace vellumo
