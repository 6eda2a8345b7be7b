// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/atspi/AtspiProtocol.h"
#include <QHash>
#include <QString>
#include <functional>
#include <optional>

namespace vellumo {

class AtspiQuestion;

/// Finds processes and their windows on the accessibility bus.
class AtspiApplications {
public:
    /// `windowTitle` returns the title of the process's window in front, from the window system.
    explicit AtspiApplications(std::function<std::optional<QString>(qint64)> windowTitle);

    /// Returns the bus name under which the process has registered; absent if it has not. Of
    /// several names, and of those of sandboxed applications, which are behind a proxy's process,
    /// the one whose window is in front. The result is cached; call forget() when the name is no
    /// longer owned.
    [[nodiscard]] std::optional<QString> serviceOf(qint64 processIdentifier,
                                                   AtspiQuestion &question);
    /// Returns the cached names of a process.
    [[nodiscard]] QStringList knownServices(qint64 processIdentifier) const
    {
        return processes_.keys(processIdentifier);
    }
    void forget(const QString &service) { processes_.remove(service); }
    void clear() { processes_.clear(); }

    /// Returns the frame of the process's window in front.
    [[nodiscard]] std::optional<ObjectReference>
    activeFrame(qint64 processIdentifier, const QString &service, AtspiQuestion &question) const;

private:
    struct Frame {
        ObjectReference object;
        bool isActive = false;
        bool isTitled = false; ///< has the title of the window in front
    };

    void lookUp(AtspiQuestion &question);
    [[nodiscard]] QStringList sandboxedServices() const;
    [[nodiscard]] QString titleInFront(qint64 processIdentifier) const;
    [[nodiscard]] static QList<QList<Frame>>
    framesOf(const QStringList &services, const QString &title, AtspiQuestion &question);

    std::function<std::optional<QString>(qint64)> windowTitle_;
    QHash<QString, qint64> processes_; ///< by service
};

} // namespace vellumo
