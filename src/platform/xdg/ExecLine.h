// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The command in the Exec entry of a .desktop file, by the Desktop Entry Specification.
namespace vellumo::execLine {

/// The words of an unescaped value. %% is read as %; field codes such as %U stay as they are.
[[nodiscard]] QStringList words(const QString &value);

/// The program as the first word, quoted and escaped as the file has it.
[[nodiscard]] QByteArray written(const QString &program);

} // namespace vellumo::execLine
