// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>

namespace vellumo {

/// Whether a window of this class (a part of WM_CLASS) belongs to a terminal emulator. There the
/// copy keys of ordinary applications may interrupt or feed the program that runs inside.
[[nodiscard]] bool isTerminalClass(QByteArrayView windowClass);

} // namespace vellumo
