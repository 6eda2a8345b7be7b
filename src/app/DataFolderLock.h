// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QLockFile>
#include <QString>

namespace vellumo {

/// Held for the whole run, so that no two processes write the same notes, whatever buses and
/// displays they were started on. The lock of a process that has died is taken over.
class DataFolderLock {
public:
    explicit DataFolderLock(const QString &folder);

    /// False when another process holds the lock. A folder that cannot be written to needs none.
    /// Once true, it stays true.
    [[nodiscard]] bool tryLock();

    /// The process that holds the lock; 0 when it is not known.
    [[nodiscard]] qint64 owner() const;

    [[nodiscard]] QString folder() const { return folder_; }

private:
    QString folder_;
    QLockFile lock_;
    bool isNeedless_ = false;
};

} // namespace vellumo
