// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>

namespace vellumo {

/// Returns whether a window of this class (a part of WM_CLASS) belongs to a terminal emulator.
/// There the copy keys may interrupt the program that runs inside, or be input for it.
[[nodiscard]] bool isTerminalClass(QByteArrayView windowClass);

/// Returns whether copy keys must not be sent to a window of this class: a terminal; Emacs, where
/// they copy the region even when it is not active; Calc, where they copy the cell of the cursor
/// and leave a frame around it.
[[nodiscard]] bool mishandlesCopyKeys(QByteArrayView windowClass);

/// Returns whether an application of this window class publishes its selection once more when a
/// click ends it, as Emacs does.
[[nodiscard]] bool republishesEndedSelection(QByteArrayView windowClass);

} // namespace vellumo
