// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <optional>

namespace vellumo {

class AtspiQuestion;
struct ObjectReference;

/// Returns the address of the document in front in the window, as its application spells it.
/// Browsers either relate their frame to the document of the front tab, or embed a document of
/// another process.
[[nodiscard]] std::optional<QString>
pageAddressIn(const ObjectReference &frame, qint64 processIdentifier, AtspiQuestion &question);

} // namespace vellumo
