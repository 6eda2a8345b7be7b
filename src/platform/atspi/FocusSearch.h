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
    bool isEditable = false;
};

/// Finds the focused object of an application: the cached one if it still has the focus, else the
/// result of the application's own search, else of a walk through its tree. In some applications a
/// press of Alt moves the focus to the menu bar; then the previous object is returned if it is
/// known, since the user sees its selection.
class FocusSearch {
public:
    FocusSearch(AtspiApplications &applications, FocusEvents &events);

    [[nodiscard]] std::optional<FocusedObject>
    find(qint64 processIdentifier, const QString &service, AtspiQuestion &question);

private:
    [[nodiscard]] std::optional<FocusedObject>
    findFocused(qint64 processIdentifier, const QString &service, AtspiQuestion &question);
    [[nodiscard]] std::optional<FocusedObject> behindMenu(const QString &service,
                                                          AtspiQuestion &question) const;
    [[nodiscard]] static std::optional<FocusedObject> confirm(const ObjectReference &object,
                                                              AtspiQuestion &question);

    AtspiApplications &applications_;
    FocusEvents &events_;
};

} // namespace vellumo
