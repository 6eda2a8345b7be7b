// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace vellumo {

/// What is of interest in the file that describes an application to the desktop.
struct DesktopEntry {
    QString id; ///< file name without suffix, folders below "applications" joined with '-'
    QString name; ///< in the best of the wanted languages
    QString startupWmClass;
    QString executable; ///< the program's file name in Exec; empty for a launcher such as env
    bool isTextEditor = false; ///< by its categories
    bool isShown = true; ///< not NoDisplay
    bool isDeleted = false; ///< Hidden: the file only takes another one's place
};

/// The entry in a file's contents; absent when it describes no application. `languages` are in the
/// files' own form ("pt_BR", "pt"), the best first.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(const QByteArray &contents,
                                                            const QStringList &languages);

/// The user's languages in the form that parseDesktopEntry() takes, from the environment's
/// LANGUAGE, LC_ALL, LC_MESSAGES and LANG.
[[nodiscard]] QStringList desktopEntryLanguages();

} // namespace vellumo
