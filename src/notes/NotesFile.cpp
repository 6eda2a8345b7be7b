// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/NotesFile.h"

#include "files/PrivateDirectory.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <numeric>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

const QString unreadableSuffix = u".unreadable-"_s;

} // namespace

NotesFile::NotesFile(QString path) : path_(std::move(path)) { }

std::optional<StoreFile> NotesFile::read()
{
    auto file = decoded();
    isUnreadable_ = !file && QFileInfo::exists(path_);
    return file;
}

std::optional<StoreFile> NotesFile::decoded()
{
    QFile file(path_);
    // Open regular files only: opening a pipe would block until there is a writer.
    if (!QFileInfo(path_).isFile() || !file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    known_ = fileIdentity(file.handle());
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        return std::nullopt;
    }
    size_ = bytes.size();
    return StoreFile::decode(bytes);
}

std::optional<StoreFile> NotesFile::readOutsideChange()
{
    if (!QFileInfo::exists(path_)) {
        isUnreadable_ = false;
        return std::nullopt;
    }
    // A file that was unreadable may have become readable without a change of its identity.
    if (!isUnreadable_ && fileIdentity(path_) == known_) {
        return std::nullopt;
    }
    auto theirs = decoded();
    isUnreadable_ = !theirs || theirs->hasTwinBuckets();
    return isUnreadable_ ? std::nullopt : std::move(theirs);
}

std::optional<QString> NotesFile::makeFolder()
{
    const auto failure = makePrivateDirectory(QFileInfo(path_).absolutePath());
    return failure ? std::optional(failure->text()) : std::nullopt;
}

std::optional<QString> NotesFile::write(const QList<QByteArray> &pieces, Durability durability)
{
    if (isUnreadable_) {
        if (auto failure = setAside()) {
            return failure;
        }
        isUnreadable_ = false;
    }
    size_ =
        std::accumulate(pieces.cbegin(), pieces.cend(), qint64{0},
                        [](qint64 size, const QByteArray &piece) { return size + piece.size(); });
    AtomicFile file(path_,
                    {.durability = durability,
                     .mode = AtomicFile::Mode::Private,
                     .temporary = AtomicFile::Temporary::Fixed});
    for (const QByteArray &piece : pieces) {
        file.write(piece);
    }
    const bool isSaved = file.commit();
    if (file.written()) {
        known_ = file.written();
    }
    return isSaved ? std::nullopt : std::optional(file.error()->text());
}

/// Renames the file to a unique name in the same folder.
std::optional<QString> NotesFile::setAside()
{
    const QString stamp = QDateTime::currentDateTimeUtc().toString(u"yyyyMMdd'T'HHmmsszzz'Z'"_s);
    QFile file(path_);
    if (file.rename(path_ + unreadableSuffix + stamp)) {
        return std::nullopt;
    }
    return u"cannot set the unreadable %1 aside: %2"_s.arg(path_, file.errorString());
}

QStringList NotesFile::unreadableFiles() const
{
    const QFileInfo file(path_);
    QStringList found;
    if (isUnreadable_) {
        found.append(path_);
    }
    // The names contain the time, so that they sort by it.
    const QStringList names = file.dir().entryList({file.fileName() + unreadableSuffix + u'*'},
                                                   QDir::Files, QDir::Name | QDir::Reversed);
    for (const QString &name : names) {
        found.append(file.dir().filePath(name));
    }
    return found;
}

} // namespace vellumo
