// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/AtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) { }
    FileDescriptor(const FileDescriptor &) = delete;
    FileDescriptor &operator=(const FileDescriptor &) = delete;
    FileDescriptor(FileDescriptor &&) = delete;
    FileDescriptor &operator=(FileDescriptor &&) = delete;
    ~FileDescriptor() { close(); }

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    [[nodiscard]] int get() const { return descriptor_; }

    bool close()
    {
        const int descriptor = std::exchange(descriptor_, -1);
        return descriptor < 0 || ::close(descriptor) == 0;
    }

private:
    int descriptor_;
};

QString problem(const QString &action, const QString &path)
{
    return u"cannot %1 %2: %3"_s.arg(action, path, QString::fromLocal8Bit(std::strerror(errno)));
}

bool writeAll(int descriptor, const QList<QByteArray> &pieces)
{
    constexpr qsizetype maxParts = 512; // below IOV_MAX of all systems
    qsizetype next = 0;
    qsizetype written = 0; // number of bytes written of the next piece
    while (next < pieces.size()) {
        std::array<iovec, maxParts> parts{};
        int count = 0;
        for (qsizetype i = next; i < pieces.size() && count < maxParts; ++i, ++count) {
            const qsizetype skipped = i == next ? written : 0;
            parts[static_cast<size_t>(count)] = {
                const_cast<char *>(pieces.at(i).constData() + skipped),
                static_cast<size_t>(pieces.at(i).size() - skipped)};
        }
        const ssize_t taken = ::writev(descriptor, parts.data(), count);
        if (taken < 0 && errno != EINTR) {
            return false;
        }
        written += qMax<ssize_t>(taken, 0);
        while (next < pieces.size() && written >= pieces.at(next).size()) {
            written -= pieces.at(next++).size();
        }
    }
    return true;
}

bool syncDirectory(const QString &path)
{
    const FileDescriptor directory(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some file systems cannot sync a directory and report EINVAL, which is ignored.
    return directory.isOpen() && (::fsync(directory.get()) == 0 || errno == EINVAL);
}

FileIdentity identity(const struct stat &state)
{
    return {state.st_dev, state.st_ino, state.st_size, state.st_mtim.tv_sec, state.st_mtim.tv_nsec};
}

std::optional<QString> writeBeside(const QString &temporary, const QList<QByteArray> &pieces,
                                   std::optional<FileIdentity> &written)
{
    FileDescriptor file(::open(QFile::encodeName(temporary).constData(),
                               O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!file.isOpen() || ::fchmod(file.get(), 0600) != 0) {
        return problem(u"create"_s, temporary);
    }
    if (!writeAll(file.get(), pieces)) {
        return problem(u"write"_s, temporary);
    }
    // Before renaming: a file system may write the new name first and lose the data.
    if (::fsync(file.get()) != 0) {
        return problem(u"sync"_s, temporary);
    }
    written = fileIdentity(file.get());
    if (!file.close()) {
        return problem(u"close"_s, temporary);
    }
    return std::nullopt;
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

std::optional<QString> replaceFile(const QString &path, const QList<QByteArray> &pieces,
                                   Durability durability, std::optional<FileIdentity> &written)
{
    const QFileInfo info(path);
    const QString target = info.isSymLink() && info.exists() ? info.canonicalFilePath() : path;
    const QString temporary = target + u".tmp"_s;
    std::optional<FileIdentity> beside;
    std::optional<QString> failure = writeBeside(temporary, pieces, beside);
    if (!failure
        && std::rename(QFile::encodeName(temporary).constData(),
                       QFile::encodeName(target).constData())
            != 0) {
        failure = problem(u"replace"_s, target);
    }
    if (failure) {
        ::unlink(QFile::encodeName(temporary).constData());
        return failure;
    }
    written = beside;
    const QString directory = QFileInfo(target).absolutePath();
    if (durability == Durability::Synced && !syncDirectory(directory)) {
        return problem(u"sync"_s, directory);
    }
    return std::nullopt;
}

std::optional<QString> makePrivateDirectory(const QString &path)
{
    const QFileInfo info(path);
    if (info.isDir()) {
        return std::nullopt;
    }
    const QString parent = info.absolutePath();
    if (!QDir().mkpath(parent)) {
        return problem(u"create"_s, parent);
    }
    if (::mkdir(QFile::encodeName(path).constData(), 0700) != 0 && errno != EEXIST) {
        return problem(u"create"_s, path);
    }
    return std::nullopt;
}

} // namespace vellumo
