// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/atspi/AtspiProtocol.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <functional>

namespace vellumo {

/// Looks once through all applications on the accessibility bus for frames with the state "active".
/// Never blocks. Ends within a second: an application that does not answer in time is skipped.
class ActiveFrameSearch : public QObject {
    Q_OBJECT

public:
    /// Starts the search.
    explicit ActiveFrameSearch(QDBusConnection bus);

Q_SIGNALS:
    /// Emitted once, never before the constructor returns.
    void ended(const QList<vellumo::ObjectReference> &frames);

private:
    using Answered = std::function<void(const QDBusMessage &)>;

    void ask(const ObjectReference &object, const char *method, const Answered &answered);
    void onApplications(const QDBusMessage &answer);
    void onFrames(const QDBusMessage &answer);

    QDBusConnection bus_;
    int awaited_ = 0; ///< number of answers
    QList<ObjectReference> found_;
};

} // namespace vellumo
