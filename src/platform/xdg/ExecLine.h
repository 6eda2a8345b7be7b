// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Reads and writes the command in the Exec entry of a .desktop file.
namespace vellumo::execLine {

/// Splits an unescaped value into words. %% becomes %; field codes such as %U are kept.
[[nodiscard]] QStringList words(const QString &value);

/// Returns the program as the first word, quoted and escaped for the file.
[[nodiscard]] QByteArray written(const QString &program);

} // namespace vellumo::execLine
