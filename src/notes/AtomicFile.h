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

/// What changes whenever a file has been written by another: two that are equal are the same bytes.
struct FileIdentity {
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    qint64 seconds = 0; ///< of the last modification
    qint64 nanoseconds = 0;
    friend bool operator==(const FileIdentity &, const FileIdentity &) = default;
};

/// Of the file that is open, or that is found under the path, through symbolic links; absent when
/// there is none or it cannot be asked about.
[[nodiscard]] std::optional<FileIdentity> fileIdentity(int descriptor);
[[nodiscard]] std::optional<FileIdentity> fileIdentity(const QString &path);

/// Replaces the file's content, given in pieces, so that at every moment either the old or the new
/// bytes are under its name. The file is readable by the user alone (0600). A symbolic link is
/// followed, not replaced. One writer at a time. Answers what went wrong, or nothing. `written` is
/// set as soon as the new bytes have the name.
[[nodiscard]] std::optional<QString> replaceFile(const QString &path,
                                                 const QList<QByteArray> &pieces,
                                                 Durability durability,
                                                 std::optional<FileIdentity> &written);

/// Makes the directory and its parents; a directory that is made is the user's alone (0700).
[[nodiscard]] std::optional<QString> makePrivateDirectory(const QString &path);

} // namespace vellumo
