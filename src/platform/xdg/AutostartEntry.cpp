// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/xdg/AutostartEntry.h"

#include "files/AtomicFile.h"
#include "platform/xdg/DesktopFile.h"
#include "platform/xdg/ExecLine.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

const QString fileName = u"/app.vellumo.Vellumo.desktop"_s;
constexpr auto hiddenKey = "Hidden";
constexpr auto gnomeKey = "X-GNOME-Autostart-enabled";
constexpr auto execKey = "Exec";
constexpr auto tryKey = "TryExec"; ///< a desktop ignores the entry when this program is gone

constexpr auto newEntry = R"([Desktop Entry]
Type=Application
Name=vellumo
Comment=Explains what you select, where you read it
Comment[zh_CN]=选中即解释
Icon=app.vellumo.Vellumo
Terminal=false
StartupNotify=false
)";

/// Overrides and disables the entry for all users.
constexpr auto hidingEntry = "[Desktop Entry]\nType=Application\nName=vellumo\nHidden=true\n";

QByteArray command(const QString &program)
{
    return execLine::written(program) + " --background";
}

QByteArray tried(const QString &program)
{
    return program.toUtf8().replace('\\', "\\\\");
}

QByteArray newContents(const QString &program)
{
    return newEntry + QByteArray("Exec=") + command(program) + "\nTryExec=" + tried(program) + '\n';
}

/// Returns whether the contents are exactly what this class writes.
bool isOwn(const QByteArray &contents, const QString &program)
{
    return contents == newContents(program) || contents == hidingEntry;
}

DesktopFile fileAt(const QString &path)
{
    QFile file(path);
    return DesktopFile(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
}

bool isDisabled(const DesktopFile &file)
{
    return file.value(hiddenKey) == "true"_L1 || file.value(gnomeKey) == "false"_L1;
}

bool startsSomething(const DesktopFile &file)
{
    const auto isThere = [](const QString &program) {
        return !program.isEmpty() && !QStandardPaths::findExecutable(program).isEmpty();
    };
    return isThere(execLine::words(file.value(execKey)).value(0))
        && (!file.has(tryKey) || isThere(file.value(tryKey)));
}

} // namespace

AutostartEntry::AutostartEntry(QStringList folders, QString program, QObject *parent)
    : LoginStart(parent)
    , folders_(std::move(folders))
    , program_(std::move(program))
{
    watcher_.addPath(QFileInfo::exists(folders_.constFirst())
                         ? folders_.constFirst()
                         : QFileInfo(folders_.constFirst()).absolutePath());
    if (QFileInfo::exists(userFile())) {
        watcher_.addPath(userFile());
    }
    const auto look = [this] {
        for (const QString &path : {folders_.constFirst(), userFile()}) {
            if (QFileInfo::exists(path)) {
                watcher_.addPath(path); // a replaced file is no longer watched
            }
        }
        Q_EMIT changed();
    };
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, look);
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, look);
}

QStringList AutostartEntry::standardFolders()
{
    QStringList folders = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
    std::ranges::for_each(folders, [](QString &folder) { folder += u"/autostart"_s; });
    return folders;
}

QString AutostartEntry::ownProgram()
{
    const QString path = QCoreApplication::applicationFilePath();
    const QString named = QStandardPaths::findExecutable(u"vellumo"_s);
    return QFileInfo(named).canonicalFilePath() == QFileInfo(path).canonicalFilePath()
        ? u"vellumo"_s
        : path;
}

QString AutostartEntry::userFile() const
{
    return folders_.constFirst() + fileName;
}

bool AutostartEntry::isSetForAll() const
{
    return std::any_of(folders_.cbegin() + 1, folders_.cend(), [](const QString &folder) {
        return QFileInfo::exists(folder + fileName) && !isDisabled(fileAt(folder + fileName));
    });
}

LoginStart::State AutostartEntry::state() const
{
    if (!QFileInfo::exists(userFile())) {
        return isSetForAll() ? State::OnForAll : State::Off;
    }
    const DesktopFile file = fileAt(userFile());
    if (isDisabled(file)) {
        return State::SwitchedOff;
    }
    return startsSomething(file) ? State::On : State::Broken;
}

bool AutostartEntry::setOn(bool isOn)
{
    const bool isDone = isOn ? switchOn() : switchOff();
    Q_EMIT changed();
    return isDone;
}

bool AutostartEntry::switchOff()
{
    const bool isThere = QFileInfo::exists(userFile());
    DesktopFile file = fileAt(userFile());
    if (isThere && !isOwn(file.contents(), program_)) {
        file.set(hiddenKey, "true");
        return write(file.contents());
    }
    return isSetForAll() ? write(hidingEntry) : !isThere || QFile::remove(userFile());
}

bool AutostartEntry::switchOn()
{
    DesktopFile file = fileAt(userFile());
    if (!file.has(execKey)) {
        return write(newContents(program_));
    }
    file.remove(hiddenKey);
    file.remove(gnomeKey);
    if (!startsSomething(file)) {
        file.set(execKey, command(program_));
        file.set(tryKey, tried(program_));
    }
    return write(file.contents());
}

bool AutostartEntry::write(const QByteArray &entry)
{
    const QFileInfo existing(userFile());
    if (!QDir().mkpath(folders_.constFirst()) || (existing.exists() && !existing.isWritable())) {
        return false;
    }
    AtomicFile file(userFile(),
                    {.durability = Durability::Ordinary, .mode = AtomicFile::Mode::Kept});
    return file.write(entry) && file.commit();
}

} // namespace vellumo
