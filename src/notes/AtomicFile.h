// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

namespace vellumo {

enum class Durability : quint8 {
    Ordinary, ///< after a power cut the old or the new bytes are there, whole
    Synced, ///< after a power cut the new bytes are there, once the call has returned
};

/// Replaces the file's content, given in pieces, so that at every moment either the old or the new
/// bytes stand under its name. The file is readable by the user alone (0600). A symbolic link is
/// followed, not replaced. One writer at a time. Answers what went wrong, or nothing.
[[nodiscard]] std::optional<QString>
replaceFile(const QString &path, const QList<QByteArray> &pieces, Durability durability);

/// Makes the directory and its parents; a directory that is made is the user's alone (0700).
[[nodiscard]] std::optional<QString> makePrivateDirectory(const QString &path);

} // namespace vellumo
