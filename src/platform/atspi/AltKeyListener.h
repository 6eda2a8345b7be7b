// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/TapSource.h"
#include <QDBusVirtualObject>
#include <QMutex>
#include <QWaitCondition>

namespace vellumo {

/// The object on the accessibility bus that is notified of the Alt keys. Lives in a thread of its
/// own; the signals are emitted there.
class AltKeyListener : public QDBusVirtualObject {
    Q_OBJECT

public:
    /// Connects and registers; blocks for as long as the bus takes to answer.
    void open(const QString &address);
    void close();

    /// Thread-safe, like TapSource::waitForRelease().
    bool waitForRelease(QDeadlineTimer deadline);

    [[nodiscard]] QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

Q_SIGNALS:
    void pressed(vellumo::TapSource::Time at);
    void released(vellumo::TapSource::Time at);

private:
    void note(bool isPress);

    QString connectionName_;
    QMutex mutex_;
    QWaitCondition releasedCondition_;
    bool isHeld_ = false; ///< guarded by mutex_, like heldSince_
    TapSource::Time heldSince_;
};

} // namespace vellumo
