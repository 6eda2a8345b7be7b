// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// Values in the notation of GSettings: GVariant texts, and accelerators such as "<Super>e".
namespace vellumo::accelerator {

/// Returns the strings in the text of a string or of an array of strings.
[[nodiscard]] QStringList strings(const QString &text);
/// Returns the text of a string, and of an array of strings.
[[nodiscard]] QString textOf(const QString &string);
[[nodiscard]] QString textOf(const QStringList &strings);

/// Returns the keys as people write them, such as "Super+Ctrl+E"; two accelerators for the same
/// keys give the same text. Empty if this is no accelerator.
[[nodiscard]] QString readable(const QString &accelerator);

} // namespace vellumo::accelerator
