// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/qt/AutostartEntry.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
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

/// Hides the entry that is set for all users.
constexpr auto hidingEntry = "[Desktop Entry]\nType=Application\nName=vellumo\nHidden=true\n";

/// What means something between double quotes, unless a backslash stands before it.
constexpr QStringView escapedInQuotes = u"\\\"`$";

/// The program as the first word of an Exec value.
QString quoted(const QString &program)
{
    static const QRegularExpression plain(u"^[\\w.+-]+$"_s);
    if (plain.match(program).hasMatch()) {
        return program;
    }
    QString word(u'"');
    for (const QChar c : program) {
        if (escapedInQuotes.contains(c)) {
            word += u'\\';
        }
        word += c;
    }
    // beyond the quotes: signs that stand for files, and the escapes of every value of an entry
    word += u'"';
    return word.replace(u'%', u"%%"_s).replace(u'\\', u"\\\\"_s);
}

/// The program that an Exec value begins with.
QString unquoted(const QString &exec)
{
    QString value = exec;
    value.replace(u"\\\\"_s, u"\\"_s);
    QString program;
    bool isInQuotes = false;
    for (qsizetype i = 0; i < value.size() && (isInQuotes || !value[i].isSpace()); ++i) {
        if (value[i] == u'"') {
            isInQuotes = !isInQuotes;
            continue;
        }
        if (value[i] == u'\\' && i + 1 < value.size() && escapedInQuotes.contains(value[i + 1])) {
            ++i;
        }
        program += value[i];
    }
    return program.replace(u"%%"_s, u"%"_s);
}

QString command(const QString &program)
{
    return quoted(program) + u" --background"_s;
}

QString newText(const QString &program)
{
    return QString::fromUtf8(newEntry).arg(command(program));
}

/// Whether all of this was written here.
bool isOwnText(const QString &text, const QString &program)
{
    return text == newText(program) || text.toUtf8() == hidingEntry;
}

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
            qsizetype last = end;
            while (last > 0 && lines.at(last - 1).trimmed().isEmpty()) {
                --last;
            }
            lines.insert(last, key + u'=' + value);
            ++end;
        }
    }
    void remove(const QString &key)
    {
        if (const qsizetype index = indexOf(key); index >= 0) {
            lines.removeAt(index);
            --end;
        }
    }
    [[nodiscard]] QString text() const { return lines.join(u'\n'); }
    [[nodiscard]] bool isDisabled() const
    {
        return value(hiddenKey) == "true"_L1 || value(gnomeKey) == "false"_L1;
    }
    [[nodiscard]] bool leadsSomewhere() const
    {
        const QString program = unquoted(value(u"Exec"_s));
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
    const bool isDone = isOn ? switchOn() : switchOff();
    Q_EMIT changed();
    return isDone;
}

bool AutostartEntry::switchOff()
{
    const bool isThere = QFileInfo::exists(userFile());
    Entry entry(userFile());
    const bool isOthers = isThere && !isOwnText(entry.text(), program_);
    if (isOthers) {
        entry.set(hiddenKey, u"true"_s);
        return write(entry.text().toUtf8());
    }
    return isSetForAll() ? write(hidingEntry) : !isThere || QFile::remove(userFile());
}

bool AutostartEntry::switchOn()
{
    Entry entry(userFile());
    if (entry.indexOf(u"Exec"_s) < 0) {
        return write(newText(program_).toUtf8());
    }
    entry.remove(hiddenKey);
    entry.remove(gnomeKey);
    if (!entry.leadsSomewhere()) {
        entry.set(u"Exec"_s, command(program_));
    }
    return write(entry.text().toUtf8());
}

bool AutostartEntry::write(const QByteArray &entry)
{
    QSaveFile file(userFile());
    return QDir().mkpath(folders_.constFirst()) && file.open(QIODevice::WriteOnly)
        && file.write(entry) == entry.size() && file.commit();
}

} // namespace vellumo
