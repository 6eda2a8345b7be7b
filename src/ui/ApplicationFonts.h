// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace vellumo {

/// The families to ask for: the desktop's own first, then the one that gives Chinese text its
/// simplified forms. Without it the forms follow the locale, and an English one gets Japanese.
[[nodiscard]] QStringList readingFontFamilies(const QString &systemFamily);

/// Sets them on the application. To be called once, after QGuiApplication is made and before any
/// window.
void installApplicationFonts();

} // namespace vellumo
