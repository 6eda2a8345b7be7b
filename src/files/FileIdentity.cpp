// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "files/FileIdentity.h"

#include <QFile>
#include <sys/stat.h>

namespace vellumo {

namespace {

FileIdentity identity(const struct stat &state)
{
    return {state.st_dev, state.st_ino, state.st_size, state.st_mtim.tv_sec, state.st_mtim.tv_nsec};
}

} // namespace

std::optional<FileIdentity> fileIdentity(int descriptor)
{
    struct stat state { };
    return ::fstat(descriptor, &state) == 0 ? std::optional(identity(state)) : std::nullopt;
}

std::optional<FileIdentity> fileIdentity(const QString &path)
{
    struct stat state { };
    return ::stat(QFile::encodeName(path).constData(), &state) == 0 ? std::optional(identity(state))
                                                                    : std::nullopt;
}

} // namespace vellumo
