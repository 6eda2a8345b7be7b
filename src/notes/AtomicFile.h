// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

namespace vellumo {

enum class Durability : quint8 {
    Ordinary, ///< after a power failure either the old or the new content is complete
    Synced, ///< once the call has returned, the new content survives a power failure
};

/// Identifies a state of a file. It changes whenever another program writes the file: equal
/// identities mean equal content.
struct FileIdentity {
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    qint64 seconds = 0; ///< time of the last modification
    qint64 nanoseconds = 0;
    friend bool operator==(const FileIdentity &, const FileIdentity &) = default;
};

/// Returns the identity of an open file, or of the file at a path, following symbolic links; absent
/// when there is none or it cannot be queried.
[[nodiscard]] std::optional<FileIdentity> fileIdentity(int descriptor);
[[nodiscard]] std::optional<FileIdentity> fileIdentity(const QString &path);

/// Replaces the file's content, given in pieces, atomically. The file gets mode 0600. A symbolic
/// link is followed, not replaced. Only one writer at a time. Returns a description of the error;
/// absent on success. `written` is set as soon as the file has its new content.
[[nodiscard]] std::optional<QString> replaceFile(const QString &path,
                                                 const QList<QByteArray> &pieces,
                                                 Durability durability,
                                                 std::optional<FileIdentity> &written);

/// Creates the directory with mode 0700, and its parents. Returns a description of the error;
/// absent on success.
[[nodiscard]] std::optional<QString> makePrivateDirectory(const QString &path);

} // namespace vellumo
