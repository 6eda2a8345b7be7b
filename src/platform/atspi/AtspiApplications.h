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
    /// `windowTitle` answers the title of the process's window in front, from the window system.
    explicit AtspiApplications(std::function<std::optional<QString>(qint64)> windowTitle);

    /// The bus name under which the process has registered; absent for processes that have not.
    /// Among several, and among those of sandboxes, which stand behind the process of a proxy, the
    /// one whose window is in front. Remembered; call forget() when the name turns out to be gone.
    [[nodiscard]] std::optional<QString> serviceOf(qint64 processIdentifier,
                                                   AtspiQuestion &question);
    /// The names that are remembered of a process.
    [[nodiscard]] QStringList knownServices(qint64 processIdentifier) const
    {
        return processes_.keys(processIdentifier);
    }
    void forget(const QString &service) { processes_.remove(service); }
    void clear() { processes_.clear(); }

    /// The frame of the process's window in front.
    [[nodiscard]] std::optional<ObjectReference>
    activeFrame(qint64 processIdentifier, const QString &service, AtspiQuestion &question) const;

private:
    struct Frame {
        ObjectReference object;
        bool isActive = false;
        bool isTitled = false; ///< as the window in front
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
