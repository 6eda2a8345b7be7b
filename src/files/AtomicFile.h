// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "files/FileError.h"
#include "files/FileIdentity.h"
#include <QByteArray>
#include <QList>
#include <optional>

namespace vellumo {

enum class Durability : quint8 {
    Ordinary, ///< after a power failure either the old or the new content is complete
    Synced, ///< once commit() has returned, the new content survives a power failure
};

/// Replaces a file's content atomically: the content is written into a temporary file beside it,
/// which commit() syncs and renames. Without a successful commit() the old file stays as it is, and
/// the temporary file is removed. A symbolic link is followed, not replaced. The first failure is
/// kept, and every later call returns false. Blocks for the disk. Any thread, one at a time.
class AtomicFile {
public:
    enum class Mode : quint8 {
        Private, ///< 0600
        Kept, ///< the mode of the replaced file; the usual one for a new file
    };
    enum class Temporary : quint8 {
        Unique, ///< there may be several writers
        /// The name with ".tmp", for one writer at a time: the next one overwrites what a killed
        /// process has left.
        Fixed,
    };
    struct Options {
        Durability durability = Durability::Ordinary;
        Mode mode = Mode::Private;
        Temporary temporary = Temporary::Unique;
    };

    /// Creates the temporary file.
    AtomicFile(const QString &path, const Options &options);
    ~AtomicFile();
    Q_DISABLE_COPY_MOVE(AtomicFile)

    /// Appends to the content. Pieces are gathered, so that a failure may be noticed by a later
    /// call.
    bool write(const QByteArray &piece);
    bool commit();

    /// The first failure.
    [[nodiscard]] const std::optional<FileError> &error() const { return error_; }
    /// The file's identity, as soon as it has its new content, which may be before commit() fails.
    [[nodiscard]] const std::optional<FileIdentity> &written() const { return written_; }

private:
    bool create();
    bool flush();
    bool close();
    bool fail(const QString &action, const QString &path);

    Options options_;
    QString target_;
    QString temporary_; ///< empty while there is none
    int descriptor_ = -1;
    QList<QByteArray> pending_;
    qsizetype pendingSize_ = 0;
    std::optional<FileError> error_;
    std::optional<FileIdentity> written_;
};

} // namespace vellumo
