// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/xdg/DesktopEntries.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <tuple>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// Real entries with all translations have some tens of kilobytes.
constexpr qint64 maxFileSize = qint64{1024} * 1024;

QDateTime timeOf(const QString &folder)
{
    return QFileInfo(folder).lastModified();
}

bool isSame(const QString &a, const QString &b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

} // namespace

DesktopEntries::DesktopEntries(QStringList folders, QStringList languages)
    : folders_(std::move(folders))
    , languages_(std::move(languages))
{
}

QStringList DesktopEntries::standardFolders()
{
    QString home = qEnvironmentVariable("XDG_DATA_HOME");
    if (!QDir::isAbsolutePath(home)) {
        home = QDir::homePath() + u"/.local/share"_s;
    }
    QString shared = qEnvironmentVariable("XDG_DATA_DIRS");
    if (shared.isEmpty()) {
        shared = u"/usr/local/share:/usr/share"_s;
    }
    QStringList folders{home + u"/applications"_s};
    for (const QString &folder : shared.split(u':', Qt::SkipEmptyParts)) {
        folders.append(QDir::cleanPath(folder) + u"/applications"_s);
    }
    folders.removeDuplicates();
    return folders;
}

bool DesktopEntries::isUpToDate() const
{
    if (!read_) {
        return false;
    }
    for (auto folder = folderTimes_.cbegin(); folder != folderTimes_.cend(); ++folder) {
        if (timeOf(folder.key()) != folder.value()) {
            return false;
        }
    }
    return true;
}

bool DesktopEntries::refresh()
{
    if (isUpToDate()) {
        return false;
    }
    read_ = true;
    folderTimes_.clear();
    QHash<QString, DesktopEntry> found;
    for (const QString &folder : folders_) {
        readFolder(folder, found);
    }
    entries_.clear();
    entries_.reserve(found.size());
    for (const auto &entry : std::as_const(found)) {
        if (!entry.isDeleted) {
            entries_.append(entry);
        }
    }
    std::ranges::sort(entries_, {}, [](const DesktopEntry &entry) {
        return std::tuple(!entry.isShown, entry.id);
    });
    return true;
}

void DesktopEntries::readFolder(const QString &folder, QHash<QString, DesktopEntry> &found)
{
    folderTimes_.insert(folder, timeOf(folder));
    QDirIterator files(folder, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        if (files.fileInfo().isDir()) {
            folderTimes_.insert(path, timeOf(path));
            continue;
        }
        if (!path.endsWith(".desktop"_L1)) {
            continue;
        }
        QString id = path.sliced(folder.size() + 1).chopped(8);
        id.replace(u'/', u'-');
        QFile file(path);
        if (found.contains(id) || !file.open(QIODevice::ReadOnly) || file.size() > maxFileSize) {
            continue;
        }
        // not read(maxFileSize), which allocates that size for each small file
        if (auto entry = parseDesktopEntry(file.readAll(), languages_)) {
            entry->id = id;
            found.insert(id, *std::move(entry));
        }
    }
}

const DesktopEntry *DesktopEntries::find(const QString &applicationId, const QString &instance,
                                         const QString &className) const
{
    using Test = std::function<bool(const DesktopEntry &, const QString &)>;
    const auto first = [this](const QString &text, const Test &test) -> const DesktopEntry * {
        if (text.isEmpty()) {
            return nullptr;
        }
        const auto entry = std::ranges::find_if(
            entries_, [&](const DesktopEntry &candidate) { return test(candidate, text); });
        return entry == entries_.cend() ? nullptr : &*entry;
    };
    const Test hasId = [](const auto &entry, const auto &text) { return entry.id == text; };
    if (const auto *entry = first(applicationId, hasId)) {
        return entry;
    }
    // A user's own entry may claim the class of an application that is known by its id.
    if (const auto *entry = first(className, hasId)) {
        return entry;
    }
    // The class names the application, the instance one of its windows or a user's choice. An exact
    // match of either is preferred to one that differs in case.
    const auto tests = std::to_array<Test>({
        [](const auto &entry, const auto &text) { return entry.startupWmClass == text; },
        [](const auto &entry, const auto &text) { return isSame(entry.startupWmClass, text); },
        hasId,
        [](const auto &entry, const auto &text) { return isSame(entry.id, text); },
        [](const auto &entry, const auto &text) {
            return entry.id.contains(u'.') && isSame(entry.id.section(u'.', -1), text);
        },
        [](const auto &entry, const auto &text) { return isSame(entry.executable, text); },
    });
    for (const auto &test : tests) {
        for (const auto &part : {className, instance}) {
            if (const auto *entry = first(part, test)) {
                return entry;
            }
        }
    }
    return nullptr;
}

} // namespace vellumo
