// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "mainwindow/NotesFileState.h"

#include "notes/NotesStoring.h"
#include "settings/SettingsKeys.h"
#include "ui/BilingualText.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

// As a user would write it.
QString readable(const QString &path)
{
    const QString home = QDir::homePath() + u'/';
    return path.startsWith(home) ? u"~/"_s + path.mid(home.size()) : path;
}

QString nameOf(const QString &file)
{
    return QFileInfo(file).fileName();
}

// Whether the file was renamed to make room for a new one. Otherwise the next save does that.
bool isSetAside(const QString &file)
{
    return nameOf(file).contains(".unreadable-"_L1);
}

// Survives the renaming of the file.
QString timeOf(const QString &file)
{
    return QFileInfo(file).lastModified().toUTC().toString(Qt::ISODateWithMs);
}

} // namespace

NotesFileState::NotesFileState(const NotesStoring &store, DefaultsStore &defaults,
                               const BilingualText &texts, QObject *parent)
    : QObject(parent)
    , store_(store)
    , defaults_(defaults)
    , texts_(texts)
{
    connect(&store_, &NotesStoring::filesChanged, this, &NotesFileState::update);
    connect(&texts_, &BilingualText::languageChanged, this, &NotesFileState::changed);
    update();
}

QString NotesFileState::notice() const
{
    const auto failure = store_.saveFailure();
    return failure ? unsavedText(*failure, texts_) : unreadableText();
}

bool NotesFileState::isUnsaved() const
{
    return store_.saveFailure().has_value();
}

QString NotesFileState::unsavedText(const QString &failure, const BilingualText &texts)
{
    return texts
        .pick(u"Notes cannot be saved: %1. They are kept in memory until saving works again."_s,
              u"笔记无法保存：%1。内容暂存在内存中，可以写入时会立即保存。"_s)
        .arg(failure);
}

QString NotesFileState::unreadableText() const
{
    if (unreadableFile_.isEmpty()) {
        return {};
    }
    return (isSetAside(unreadableFile_)
                ? texts_.pick(
                    u"Your notes file could not be read. vellumo started a new one and kept "
                    "the old one: %1"_s,
                    u"有一个笔记文件无法读取，vellumo 新建了一个。旧文件已保留：%1"_s)
                : texts_.pick(
                    u"Your notes file could not be read. It is kept, and set aside when the "
                    "next note is saved: %1"_s,
                    u"笔记文件无法读取。它会保留下来，保存下一条笔记时改名存放：%1"_s))
        .arg(readable(unreadableFile_));
}

bool NotesFileState::isAcknowledged(const QString &file) const
{
    if (isSetAside(file) && nameOf(file) <= settings::acknowledgedNotesFile.value(defaults_)) {
        return true;
    }
    const QString time = timeOf(file);
    return file == acknowledgedFile_
        || (!time.isEmpty() && time == settings::acknowledgedNotesTime.value(defaults_));
}

void NotesFileState::update()
{
    const QStringList files = store_.unreadableFiles();
    const auto newest = std::find_if(files.begin(), files.end(),
                                     [this](const QString &file) { return !isAcknowledged(file); });
    unreadableFile_ = newest != files.end() ? *newest : QString();
    Q_EMIT changed();
}

void NotesFileState::acknowledge()
{
    if (isSetAside(unreadableFile_)) {
        settings::acknowledgedNotesFile.set(defaults_, nameOf(unreadableFile_));
    } else {
        acknowledgedFile_ = unreadableFile_;
        settings::acknowledgedNotesTime.set(defaults_, timeOf(unreadableFile_));
    }
    update();
}

} // namespace vellumo
