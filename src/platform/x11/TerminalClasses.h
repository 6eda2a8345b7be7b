// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>

namespace vellumo {

/// Whether a window of this class (a part of WM_CLASS) belongs to a terminal emulator. There the
/// copy keys of ordinary applications may interrupt or feed the program that runs inside.
[[nodiscard]] bool isTerminalClass(QByteArrayView windowClass);

/// Whether the copy keys do something else in a window of this class: in a terminal, in Emacs,
/// where they copy the region also when it is not marked, and in Calc, where they copy the cell of
/// the cursor and leave a frame around it.
[[nodiscard]] bool mistakesCopyKeys(QByteArrayView windowClass);

/// Whether an application of this window class publishes what was selected once more when a click
/// ends the selection, as Emacs does.
[[nodiscard]] bool publishesItsEnd(QByteArrayView windowClass);

} // namespace vellumo
