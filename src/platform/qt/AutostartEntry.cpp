// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/qt/AutostartEntry.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>
#include <QStandardPaths>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

const QString fileName = u"/app.vellumo.Vellumo.desktop"_s;
const QString hiddenKey = u"Hidden"_s;
const QString gnomeKey = u"X-GNOME-Autostart-enabled"_s;

constexpr auto newEntry = R"([Desktop Entry]
Type=Application
Name=vellumo
Comment=Explains what you select, where you read it
Comment[zh_CN]=选中文字,就地解释
Icon=app.vellumo.Vellumo
Exec=%1
Terminal=false
StartupNotify=false
)";

/// The lines of a file, those of its main group told apart from what follows.
struct Entry {
    QStringList lines;
    qsizetype end = 0; ///< of the main group

    explicit Entry(const QString &path)
    {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly)) {
            lines = QString::fromUtf8(file.readAll()).split(u'\n');
        }
        const auto isOther = [](const QString &line) {
            return line.startsWith(u'[') && line.trimmed() != "[Desktop Entry]"_L1;
        };
        end = std::ranges::find_if(lines, isOther) - lines.begin();
    }

    [[nodiscard]] qsizetype indexOf(const QString &key) const
    {
        for (qsizetype i = 0; i < end; ++i) {
            if (lines.at(i).section(u'=', 0, 0).trimmed() == key) {
                return i;
            }
        }
        return -1;
    }
    [[nodiscard]] QString value(const QString &key) const
    {
        const qsizetype index = indexOf(key);
        return index < 0 ? QString() : lines.at(index).section(u'=', 1).trimmed();
    }
    void set(const QString &key, const QString &value)
    {
        if (const qsizetype index = indexOf(key); index >= 0) {
            lines[index] = key + u'=' + value;
        } else {
            lines.insert(end++, key + u'=' + value);
        }
    }
    void remove(const QString &key)
    {
        if (const qsizetype index = indexOf(key); index >= 0) {
            lines.removeAt(index);
            --end;
        }
    }
    [[nodiscard]] bool isDisabled() const
    {
        return value(hiddenKey) == "true"_L1 || value(gnomeKey) == "false"_L1;
    }
    [[nodiscard]] bool leadsSomewhere() const
    {
        const QString program = QProcess::splitCommand(value(u"Exec"_s)).value(0);
        return !program.isEmpty() && !QStandardPaths::findExecutable(program).isEmpty();
    }
};

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
                watcher_.addPath(path); // replaced files are watched anew
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

QString AutostartEntry::ownCommand()
{
    const QString path = QCoreApplication::applicationFilePath();
    const QString named = QStandardPaths::findExecutable(u"vellumo"_s);
    if (QFileInfo(named).canonicalFilePath() == QFileInfo(path).canonicalFilePath()) {
        return u"vellumo"_s;
    }
    QString quoted = path;
    for (const QChar special : u"\\\"`$"_s) {
        quoted.replace(special, u'\\' + QString(special));
    }
    return u'"' + quoted.replace(u"%"_s, u"%%"_s) + u'"';
}

QString AutostartEntry::userFile() const
{
    return folders_.constFirst() + fileName;
}

bool AutostartEntry::isSetForAll() const
{
    return std::any_of(folders_.cbegin() + 1, folders_.cend(), [](const QString &folder) {
        return QFileInfo::exists(folder + fileName) && !Entry(folder + fileName).isDisabled();
    });
}

LoginStart::State AutostartEntry::state() const
{
    if (!QFileInfo::exists(userFile())) {
        return isSetForAll() ? State::onForAll : State::off;
    }
    const Entry entry(userFile());
    if (entry.isDisabled()) {
        return State::switchedOff;
    }
    return entry.leadsSomewhere() ? State::on : State::broken;
}

bool AutostartEntry::setOn(bool isOn)
{
    const QString command = program_ + u" --background"_s;
    bool isDone = false;
    if (!isOn && isSetForAll()) {
        isDone = write("[Desktop Entry]\nType=Application\nName=vellumo\nHidden=true\n");
    } else if (!isOn) {
        isDone = !QFileInfo::exists(userFile()) || QFile::remove(userFile());
    } else if (QFileInfo::exists(userFile()) && Entry(userFile()).indexOf(u"Exec"_s) >= 0) {
        Entry entry(userFile());
        entry.remove(hiddenKey);
        entry.remove(gnomeKey);
        if (!entry.leadsSomewhere()) {
            entry.set(u"Exec"_s, command);
        }
        isDone = write(entry.lines.join(u'\n').toUtf8());
    } else {
        isDone = write(QString::fromUtf8(newEntry).arg(command).toUtf8());
    }
    Q_EMIT changed();
    return isDone;
}

bool AutostartEntry::write(const QByteArray &entry)
{
    QSaveFile file(userFile());
    return QDir().mkpath(folders_.constFirst()) && file.open(QIODevice::WriteOnly)
        && file.write(entry) == entry.size() && file.commit();
}

} // namespace vellumo
