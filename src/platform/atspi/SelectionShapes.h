// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Accessibility.h"
#include "platform/atspi/AtspiProtocol.h"
#include "platform/atspi/EmbeddedText.h"

namespace vellumo {

class AtspiQuestion;

/// Returns the selection of the focused object. Depending on the application it is in the object's
/// own text, in the document around it, in pages below it, or in adjacent paragraphs. Password
/// fields are not read.
[[nodiscard]] SelectedText readSelection(const ObjectReference &object, AtspiQuestion &question);

[[nodiscard]] OffsetQuality offsetQualityOf(const QString &service, AtspiQuestion &question);

} // namespace vellumo
