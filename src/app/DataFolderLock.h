// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <memory>

namespace vellumo {

/// Held for the whole run, so that no two processes write the same notes, whatever buses and
/// displays they were started on. The kernel drops the lock with its process, however that ends;
/// what is left on the disk holds nothing. Main thread only.
class DataFolderLock {
public:
    explicit DataFolderLock(const QString &folder);
    /// Releases the lock. The lock file stays.
    ~DataFolderLock();
    Q_DISABLE_COPY_MOVE(DataFolderLock)

    /// False when another process holds the lock. A folder that cannot be made, or whose file
    /// system has no locks, needs none. Once true, it stays true.
    [[nodiscard]] bool tryLock();

    /// Waits for the lock on a worker thread and takes it. Returns a descriptor that becomes
    /// readable when tryLock() is true; -1 when nothing can wait. Owned by this object. Until it
    /// stops waiting, tryLock() is true only then.
    [[nodiscard]] int waitForLock();
    /// Leaves the lock to others, unless tryLock() has been true.
    void stopWaiting();

    /// Returns the process that holds the lock; 0 when unknown.
    [[nodiscard]] qint64 owner() const;

private:
    class Locks;
    struct Waiting;

    [[nodiscard]] bool keep(std::unique_ptr<Locks> locks);

    QString folder_;
    QString file_;
    std::unique_ptr<Locks> locks_;
    std::shared_ptr<Waiting> waiting_; ///< with its thread, which may outlive this object
    bool isNeedless_ = false;
};

} // namespace vellumo
