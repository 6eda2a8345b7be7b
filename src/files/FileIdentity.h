// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <optional>

namespace vellumo {

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

} // namespace vellumo
