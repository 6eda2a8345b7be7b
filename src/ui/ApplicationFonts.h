// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace vellumo {

/// Returns the family with simplified Chinese forms.
[[nodiscard]] QString chineseFamily();

/// Returns the font families to request: the desktop's own first, then one with simplified Chinese
/// forms. Without it the forms depend on the locale, and an English locale gets Japanese ones.
[[nodiscard]] QStringList readingFontFamilies(const QString &systemFamily);

/// Sets the families on the application. To be called once, after QGuiApplication is created and
/// before any window.
void installApplicationFonts();

} // namespace vellumo
