// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "files/PrivateDirectory.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace vellumo {

std::optional<FileError> makePrivateDirectory(const QString &path)
{
    const QFileInfo info(path);
    if (info.isDir()) {
        return std::nullopt;
    }
    const QString parent = info.absolutePath();
    if (!QDir().mkpath(parent)) {
        return FileError{u"create"_s, parent, errno};
    }
    if (::mkdir(QFile::encodeName(path).constData(), 0700) != 0 && errno != EEXIST) {
        return FileError{u"create"_s, path, errno};
    }
    return std::nullopt;
}

} // namespace vellumo
