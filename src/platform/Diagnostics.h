// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vellumo {

/// Prints "vellumo: " and the text as one line on standard output and flushes it. Never pass
/// selections, questions, answers, tokens, keys, or where something was read.
void printDiagnostic(const QString &text);

/// Prints the text as one line, without a prefix.
void printLine(const QString &line);

/// Prints text of several lines unchanged. Only for the program's own texts.
void printText(const QString &text);

/// Returns the text as one line for a log: control characters and line breaks become spaces, and
/// invisible formatting, such as direction marks, is removed.
[[nodiscard]] QString logLine(const QString &text);

} // namespace vellumo
