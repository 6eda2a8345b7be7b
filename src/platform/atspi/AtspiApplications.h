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
    /// Remembered; call forget() when the name turns out to be gone.
    [[nodiscard]] std::optional<QString> serviceOf(qint64 processIdentifier,
                                                   AtspiQuestion &question);
    /// As serviceOf(), without asking.
    [[nodiscard]] std::optional<QString> rememberedService(qint64 processIdentifier) const;
    void forget(const QString &service) { processes_.remove(service); }
    void clear() { processes_.clear(); }

    /// The frame of the process's window in front.
    [[nodiscard]] std::optional<ObjectReference>
    activeFrame(qint64 processIdentifier, const QString &service, AtspiQuestion &question) const;

private:
    void lookUp(AtspiQuestion &question);

    std::function<std::optional<QString>(qint64)> windowTitle_;
    QHash<QString, qint64> processes_; ///< by service
};

} // namespace vellumo
