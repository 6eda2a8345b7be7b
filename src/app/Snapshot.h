// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <chrono>

class QQuickWindow;

namespace vellumo {

/// For developers: how long a window is given before its picture is taken, longer than any
/// animation in it.
constexpr std::chrono::milliseconds snapshotDelay{800};

/// For developers: writes a picture of the window as NAME-en.png or NAME-zh.png into the folder,
/// which is made if needed. Prints a diagnostic if that fails; the window may be null.
void writeSnapshot(QQuickWindow *window, const QString &folder, const QString &name,
                   bool isEnglish);

} // namespace vellumo
