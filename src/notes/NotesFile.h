// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "files/AtomicFile.h"
#include "notes/StoreFile.h"
#include <QStringList>
#include <optional>

namespace vellumo {

/// The notes file on the disk, which other programs may replace, such as a backup or a
/// synchronisation. A file that cannot be used is never overwritten, but renamed by the next write.
/// Errors are descriptions for a log; absent on success. Main thread only.
class NotesFile {
public:
    explicit NotesFile(QString path);

    [[nodiscard]] const QString &path() const { return path_; }

    /// Reads the file; absent when there is none, or it cannot be read or decoded.
    [[nodiscard]] std::optional<StoreFile> read();
    /// Reads the file if it has changed since it was read or written last.
    [[nodiscard]] std::optional<StoreFile> readOutsideChange();
    /// Creates the folder.
    [[nodiscard]] std::optional<QString> makeFolder();
    [[nodiscard]] std::optional<QString> write(const QList<QByteArray> &pieces,
                                               Durability durability);

    /// Returns whether there is a file that cannot be used.
    [[nodiscard]] bool isUnreadable() const { return isUnreadable_; }
    /// Returns the file if it cannot be used, and those that were renamed, the latest first.
    [[nodiscard]] QStringList unreadableFiles() const;
    /// Returns the size in bytes when last read or written.
    [[nodiscard]] qint64 size() const { return size_; }

private:
    [[nodiscard]] std::optional<StoreFile> decoded();
    [[nodiscard]] std::optional<QString> setAside();

    QString path_;
    qint64 size_ = 0;
    std::optional<FileIdentity> known_; ///< when last read or written
    bool isUnreadable_ = false;
};

} // namespace vellumo
