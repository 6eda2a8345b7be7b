// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>
#include <qnamespace.h>

namespace vellumo {

/// Returns the flag bits of a keyboard state in the form of the XKB extension: base, latched and
/// locked modifiers. Of the locks only Caps Lock has a flag; Mod2 (Num Lock) never has.
[[nodiscard]] quint32 modifierFlags(quint8 baseMods, quint8 latchedMods, quint8 lockedMods);

/// Returns the flag bits of the modifiers in a Qt event.
[[nodiscard]] quint32 modifierFlags(Qt::KeyboardModifiers modifiers);

} // namespace vellumo
