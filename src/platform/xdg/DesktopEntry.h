// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

namespace vellumo {

/// The parts of a .desktop file that are used here.
struct DesktopEntry {
    QString id; ///< file name without suffix, folders below "applications" joined with '-'
    QString name; ///< in the first available language
    QString startupWmClass;
    QString executable; ///< the program's file name in Exec; empty for a launcher such as env
    bool isTextEditor = false; ///< by its categories
    bool isShown = true; ///< not NoDisplay
    bool isDeleted = false; ///< Hidden: the file only overrides another one
};

/// Returns the entry in a file's contents; absent when it describes no application. `languages` are
/// in the files' form ("pt_BR", "pt"), the preferred one first.
[[nodiscard]] std::optional<DesktopEntry> parseDesktopEntry(const QByteArray &contents,
                                                            const QStringList &languages);

/// Returns the user's languages in the form that parseDesktopEntry() takes, from the environment's
/// LANGUAGE, LC_ALL, LC_MESSAGES and LANG.
[[nodiscard]] QStringList desktopEntryLanguages();

} // namespace vellumo
