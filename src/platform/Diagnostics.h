// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace vellumo {

/// Prints "vellumo: " and the text as one line on standard output, at once. Never hand it what the
/// user selected, asked or was answered, nor tokens or keys.
void printDiagnostic(const QString &text);

/// Prints the line as it stands.
void printLine(const QString &line);

} // namespace vellumo
