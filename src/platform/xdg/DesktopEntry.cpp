// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/xdg/DesktopEntry.h"

#include "platform/xdg/DesktopFile.h"
#include "platform/xdg/ExecLine.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// Launchers, whose program is among the arguments or not named at all.
bool isLauncher(const QString &program)
{
    static const QStringList launchers{u"env"_s,  u"sh"_s,      u"bash"_s,    u"flatpak"_s,
                                       u"snap"_s, u"python3"_s, u"python"_s,  u"java"_s,
                                       u"gjs"_s,  u"pkexec"_s,  u"electron"_s};
    return launchers.contains(program);
}

QString executableIn(const QString &exec)
{
    for (const QString &word : execLine::words(exec)) {
        const QString program = word.section(u'/', -1);
        if (program == "env"_L1 || program.contains(u'=')) {
            continue; // "env NAME=value program"
        }
        return isLauncher(program) ? QString() : program;
    }
    return {};
}

/// Returns the rank of a key such as "Name[de]": the position of its language in `languages`, then
/// the plain key, then other languages.
qsizetype nameRank(QByteArrayView key, const QStringList &languages)
{
    if (key == "Name") {
        return languages.size();
    }
    const auto index = languages.indexOf(QString::fromUtf8(key.sliced(5).chopped(1)));
    return index < 0 ? languages.size() + 1 : index;
}

void addLanguage(QStringList &languages, const QString &locale)
{
    static const QRegularExpression form(u"^([a-z]{2,3})(_[A-Z0-9]+)?(?:\\.[^@]*)?(@.+)?$"_s);
    const auto match = form.match(locale);
    if (!match.hasMatch()) {
        return; // C, POSIX, nonsense
    }
    const QString language = match.captured(1);
    const QString country = match.captured(2);
    const QString modifier = match.captured(3);
    for (const auto &variant :
         {language + country + modifier, language + country, language + modifier, language}) {
        if (!languages.contains(variant)) {
            languages.append(variant);
        }
    }
}

} // namespace

std::optional<DesktopEntry> parseDesktopEntry(const QByteArray &contents,
                                              const QStringList &languages)
{
    const DesktopFile file(contents);
    DesktopEntry entry;
    bool isApplication = false;
    qsizetype bestRank = languages.size() + 1;
    for (auto line = file.entryFrom(0); line; line = file.entryFrom(line->end + 1)) {
        const auto [key, value, start, end] = *line;
        if (key == "Name" || (key.startsWith("Name[") && key.endsWith(']'))) {
            if (const auto rank = nameRank(key, languages); rank < bestRank) {
                bestRank = rank;
                entry.name = DesktopFile::unescaped(value);
            }
        } else if (key == "Type") {
            isApplication = value == "Application";
        } else if (key == "StartupWMClass") {
            entry.startupWmClass = DesktopFile::unescaped(value);
        } else if (key == "Exec") {
            entry.executable = executableIn(DesktopFile::unescaped(value));
        } else if (key == "Categories") {
            const auto categories = value.toByteArray().split(';');
            entry.isTextEditor = categories.contains("TextEditor") || categories.contains("IDE");
        } else if (key == "NoDisplay") {
            entry.isShown = value != "true";
        } else if (key == "Hidden") {
            entry.isDeleted = value == "true";
        }
    }
    if (!isApplication && !entry.isDeleted) {
        return std::nullopt;
    }
    return entry;
}

QStringList desktopEntryLanguages()
{
    QString locale;
    for (const char *variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        locale = qEnvironmentVariable(variable);
        if (!locale.isEmpty()) {
            break;
        }
    }
    QStringList languages;
    if (locale != "C"_L1 && locale != "POSIX"_L1) { // LANGUAGE is ignored there
        const auto wanted = qEnvironmentVariable("LANGUAGE").split(u':', Qt::SkipEmptyParts);
        for (const QString &language : wanted) {
            addLanguage(languages, language);
        }
    }
    addLanguage(languages, locale);
    return languages;
}

} // namespace vellumo
