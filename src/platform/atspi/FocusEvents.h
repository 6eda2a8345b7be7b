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

/// Listens to what applications say about their focus, for those that cannot be asked quickly.
/// Asks for three kinds of events only; each listener makes every application send more. A
/// remembered object is a guess: it may have lost the focus or be gone. Main thread only.
class FocusEvents : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    void listenOn(const QDBusConnection &bus);
    void clear();

    /// The object that last had the focus in the application's window in front; null if unknown.
    [[nodiscard]] ObjectReference focusedIn(const QString &service) const;

    /// The object that had the focus before that one; null if unknown.
    [[nodiscard]] ObjectReference focusedBefore(const QString &service) const;

    /// How long ago the application last announced a change of a selection, leaving out the last
    /// `atLeast`; absent when it has announced none.
    [[nodiscard]] std::optional<std::chrono::milliseconds>
    sinceSelectionChange(const QString &service, std::chrono::milliseconds atLeast) const;

    /// What a search has found, until an event says otherwise.
    void remember(const ObjectReference &focused);
    void forget(const QString &service);

private Q_SLOTS:
    void onStateChanged(const QDBusMessage &message);
    void onTextSelectionChanged(const QDBusMessage &message);
    void onWindowActivated(const QDBusMessage &message);

private:
    void wake(const ObjectReference &object);
    void noteSelectionChange(const QString &service);

    std::optional<QDBusConnection> bus_; ///< that of the events
    QSet<QString> awakened_; ///< by service and path
    QHash<QString, ObjectReference> focused_; ///< by service
    QHash<QString, ObjectReference> before_; ///< by service
    QHash<QString, QList<qint64>> selectionChanges_; ///< by service: in ms, the latest last
};

} // namespace vellumo
