// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/atspi/AtspiProtocol.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QObject>
#include <QSet>
#include <chrono>
#include <optional>

namespace vellumo {

/// Tracks focus events of applications, for those whose focus cannot be queried quickly. Subscribes
/// to three kinds of events only, since each subscription makes every application send more. A
/// result is a guess: the object may have lost the focus or no longer exist. Main thread only.
class FocusEvents : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    void listenOn(const QDBusConnection &bus);
    void clear();

    /// Returns the object that last had the focus in the application's window in front; null if
    /// unknown.
    [[nodiscard]] ObjectReference focusedIn(const QString &service) const;

    /// Returns the object that had the focus before that one; null if unknown.
    [[nodiscard]] ObjectReference focusedBefore(const QString &service) const;

    /// Returns how long ago the application last announced a change of a selection, ignoring the
    /// last `atLeast`; absent when there was none.
    [[nodiscard]] std::optional<std::chrono::milliseconds>
    sinceSelectionChange(const QString &service, std::chrono::milliseconds atLeast) const;

    /// Stores the result of a search until an event replaces it.
    void remember(const ObjectReference &focused);
    void forget(const QString &service);

private Q_SLOTS:
    void onStateChanged(const QDBusMessage &message);
    void onTextSelectionChanged(const QDBusMessage &message);
    void onWindowActivated(const QDBusMessage &message);

private:
    void wake(const ObjectReference &object);
    void noteSelectionChange(const QString &service);

    std::optional<QDBusConnection> bus_; ///< the bus of the events
    QSet<QString> awakened_; ///< by service and path
    QHash<QString, ObjectReference> focused_; ///< by service
    QHash<QString, ObjectReference> before_; ///< by service
    QHash<QString, QList<qint64>> selectionChanges_; ///< by service; times in ms, latest last
};

} // namespace vellumo
