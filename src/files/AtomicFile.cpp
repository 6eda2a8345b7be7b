// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "files/AtomicFile.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr qsizetype maxParts = 512; // below IOV_MAX of all systems
constexpr qsizetype maxPendingSize = qsizetype{256} * 1024;
constexpr int maxNames = 64; // tried for a unique temporary file

bool writeAll(int descriptor, const QList<QByteArray> &pieces)
{
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

/// Some file systems cannot sync and report EINVAL, which is ignored.
bool sync(int descriptor)
{
    return ::fsync(descriptor) == 0 || errno == EINVAL;
}

bool syncDirectory(const QString &path)
{
    const int directory =
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool isSynced = directory >= 0 && sync(directory);
    const int code = errno;
    if (directory >= 0) {
        ::close(directory);
    }
    errno = code;
    return isSynced;
}

} // namespace

AtomicFile::AtomicFile(const QString &path, const Options &options) : options_(options)
{
    const QFileInfo info(path);
    target_ = info.isSymLink() && info.exists() ? info.canonicalFilePath() : path;
    create();
}

AtomicFile::~AtomicFile()
{
    close();
    if (!temporary_.isEmpty()) {
        ::unlink(QFile::encodeName(temporary_).constData());
    }
}

bool AtomicFile::create()
{
    const bool isUnique = options_.temporary == Temporary::Unique;
    const bool isPrivate = options_.mode == Mode::Private;
    const int flags = O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC | (isUnique ? O_EXCL : O_TRUNC);
    QString name = target_ + u".tmp"_s;
    for (int i = 0; i < maxNames; ++i) {
        if (isUnique) {
            name = target_
                + u".%1"_s.arg(QRandomGenerator::global()->generate(), 8, 16, QLatin1Char('0'));
        }
        descriptor_ = ::open(QFile::encodeName(name).constData(), flags, isPrivate ? 0600 : 0666);
        if (descriptor_ >= 0 || errno != EEXIST) {
            break;
        }
    }
    if (descriptor_ < 0) {
        return fail(u"create"_s, name);
    }
    temporary_ = name;
    struct stat existing { };
    const bool isReplacing = ::stat(QFile::encodeName(target_).constData(), &existing) == 0;
    const auto setMode = [this, &name](mode_t mode) {
        return ::fchmod(descriptor_, mode) == 0 || fail(u"create"_s, name);
    };
    if (isPrivate) {
        return setMode(0600);
    }
    return !isReplacing || setMode(existing.st_mode & 0777U);
}

bool AtomicFile::write(const QByteArray &piece)
{
    if (error_) {
        return false;
    }
    pending_.append(piece);
    pendingSize_ += piece.size();
    const bool isFull = pending_.size() >= maxParts || pendingSize_ >= maxPendingSize;
    return !isFull || flush();
}

bool AtomicFile::commit()
{
    // Sync before renaming: a file system may write the new name first and lose the data.
    if (error_ || !flush()) {
        return false;
    }
    if (!sync(descriptor_)) {
        return fail(u"sync"_s, temporary_);
    }
    const std::optional<FileIdentity> identity = fileIdentity(descriptor_);
    if (!close()) {
        return fail(u"close"_s, temporary_);
    }
    if (std::rename(QFile::encodeName(temporary_).constData(),
                    QFile::encodeName(target_).constData())
        != 0) {
        return fail(u"replace"_s, target_);
    }
    temporary_.clear();
    written_ = identity;
    const QString directory = QFileInfo(target_).absolutePath();
    return options_.durability == Durability::Ordinary || syncDirectory(directory)
        || fail(u"sync"_s, directory);
}

bool AtomicFile::flush()
{
    if (!writeAll(descriptor_, pending_)) {
        return fail(u"write"_s, temporary_);
    }
    pending_.clear();
    pendingSize_ = 0;
    return true;
}

bool AtomicFile::close()
{
    const int descriptor = std::exchange(descriptor_, -1);
    return descriptor < 0 || ::close(descriptor) == 0;
}

/// Records the system's last error.
bool AtomicFile::fail(const QString &action, const QString &path)
{
    error_ = FileError{action, path, errno};
    return false;
}

} // namespace vellumo
