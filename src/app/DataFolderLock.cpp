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
    if (const auto failure = makePrivateDirectory(folder_)) {
        printDiagnostic(u"notes will not be kept: "_s + *failure);
        return true;
    }
    if (lock_.tryLock(0)) {
        return true;
    }
    if (lock_.error() != QLockFile::LockFailedError) {
        printDiagnostic(u"notes will not be kept: cannot write to "_s + folder_);
        return true;
    }
    qint64 pid = 0;
    QString host;
    QString application;
    lock_.getLockInfo(&pid, &host, &application);
    printDiagnostic(u"already running as process %1"_s.arg(pid));
    return false;
}

} // namespace vellumo
