// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/DataFolderLock.h"

#include "notes/AtomicFile.h"
#include "platform/Diagnostics.h"

using namespace Qt::StringLiterals;

namespace vellumo {

DataFolderLock::DataFolderLock(const QString &folder) : folder_(folder), lock_(folder + u"/lock"_s)
{
    lock_.setStaleLockTime(0);
}

bool DataFolderLock::tryLock()
{
    if (isNeedless_ || lock_.isLocked()) {
        return true;
    }
    QString obstacle;
    if (const auto failure = makePrivateDirectory(folder_)) {
        obstacle = *failure;
    } else if (lock_.tryLock(0)) {
        return true;
    } else if (lock_.error() != QLockFile::LockFailedError) {
        obstacle = u"cannot write to "_s + folder_;
    } else {
        return false;
    }
    isNeedless_ = true;
    printDiagnostic(u"notes will not be kept: "_s + obstacle);
    return true;
}

qint64 DataFolderLock::owner() const
{
    qint64 pid = 0;
    QString host;
    QString application;
    lock_.getLockInfo(&pid, &host, &application);
    return pid;
}

} // namespace vellumo
