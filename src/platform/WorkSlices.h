// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
#include <chrono>
#include <functional>

namespace vellumo {

/// Does long work on the event loop, so that no turn of it takes much longer than one slice. For
/// work on what the main thread owns; what can be copied goes to a worker thread instead.
///
/// Belongs to one thread. Nothing is reported after stop() or once this object is destroyed.
class WorkSlices : public QObject {
    Q_OBJECT

public:
    /// Does a portion of the work that is short beside a slice, and returns whether some is left.
    using Portion = std::function<bool()>;

    WorkSlices(std::chrono::milliseconds slice, Portion portion, QObject *parent = nullptr);

    /// Does the first slice before it returns. Work that was under way is dropped.
    void start();
    void stop() { timer_.stop(); }
    /// Whether slices are left.
    [[nodiscard]] bool isActive() const { return timer_.isActive(); }

Q_SIGNALS:
    /// Emitted when the first slice was not enough.
    void postponed();
    /// Emitted once when all work is done, which may be during start().
    void finished();

private:
    void work();

    std::chrono::milliseconds slice_;
    Portion portion_;
    QTimer timer_; ///< runs while slices are left
};

} // namespace vellumo
