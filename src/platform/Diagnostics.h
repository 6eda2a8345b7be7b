// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vellumo {

/// Prints "vellumo: " and the text as one line on standard output, at once. Never hand it what the
/// user selected, asked or was answered, nor tokens, keys or places where something was read.
void printDiagnostic(const QString &text);

/// Prints the text as one line of its own.
void printLine(const QString &line);

/// Prints text of several lines unchanged: only what the program itself says.
void printText(const QString &text);

/// The text as one line of a log: each control character and end of line becomes a space, and
/// invisible formatting, such as what changes the direction of writing, goes.
[[nodiscard]] QString logLine(const QString &text);

} // namespace vellumo
