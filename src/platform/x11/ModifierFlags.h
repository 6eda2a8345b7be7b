// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>
#include <qnamespace.h>

namespace vellumo {

/// Flag bits for a keyboard state as the XKB extension splits it: keys held, keys that act on the
/// next key only, and locks. Of the locks only Caps Lock is a flag; Mod2 (Num Lock) never is.
[[nodiscard]] quint32 modifierFlags(quint8 baseMods, quint8 latchedMods, quint8 lockedMods);

/// The same bits for the modifiers that Qt reports with an event of our own windows.
[[nodiscard]] quint32 modifierFlags(Qt::KeyboardModifiers modifiers);

} // namespace vellumo
