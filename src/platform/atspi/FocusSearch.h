// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/atspi/AtspiProtocol.h"
#include <optional>

namespace vellumo {

class AtspiApplications;
class AtspiQuestion;
class FocusEvents;

struct FocusedObject {
    ObjectReference object;
    Atspi::Role role = Atspi::Role::Invalid;
};

/// Finds the focused object of an application: the remembered one if it still has the focus, else
/// what the application's own search finds, else by walking its tree.
class FocusSearch {
public:
    FocusSearch(AtspiApplications &applications, FocusEvents &events);

    [[nodiscard]] std::optional<FocusedObject>
    find(qint64 processIdentifier, const QString &service, AtspiQuestion &question);

private:
    [[nodiscard]] static std::optional<FocusedObject> confirm(const ObjectReference &object,
                                                              AtspiQuestion &question);

    AtspiApplications &applications_;
    FocusEvents &events_;
};

} // namespace vellumo
