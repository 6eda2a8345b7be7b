// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <optional>

namespace vellumo {

class AtspiQuestion;
struct ObjectReference;

/// The address of the document that the window shows in front, as its application spells it:
/// browsers relate their frame to the front tab's document, which knows its address, or embed a
/// document of another process.
[[nodiscard]] std::optional<QString>
pageAddressIn(const ObjectReference &frame, qint64 processIdentifier, AtspiQuestion &question);

} // namespace vellumo
