// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/xdg/DesktopEntry.h"
#include <QDateTime>
#include <QHash>
#include <QList>

namespace vellumo {

/// The installed applications, found by the properties of their windows. refresh() reads files,
/// which takes some milliseconds, and is meant for idle times; find() reads none.
class DesktopEntries {
public:
    /// `folders` are the "applications" folders, in order of precedence; see standardFolders().
    DesktopEntries(QStringList folders, QStringList languages);

    /// Returns the folders of XDG_DATA_HOME and XDG_DATA_DIRS.
    [[nodiscard]] static QStringList standardFolders();

    [[nodiscard]] bool isRead() const { return read_; }

    /// Reads the files if a folder has changed since the last call. Returns whether it did.
    bool refresh();

    /// Returns the entry of the window with this application id and the two parts of WM_CLASS, any
    /// of which may be empty; null if there is none. Valid until the next refresh().
    [[nodiscard]] const DesktopEntry *find(const QString &applicationId, const QString &instance,
                                           const QString &className) const;

private:
    void readFolder(const QString &folder, QHash<QString, DesktopEntry> &found);
    [[nodiscard]] bool isUpToDate() const;

    QStringList folders_;
    QStringList languages_;
    bool read_ = false;
    QHash<QString, QDateTime> folderTimes_; ///< including subfolders; invalid where absent
    QList<DesktopEntry> entries_; ///< shown ones first, then by id
};

} // namespace vellumo
