// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "mainwindow/NotesFileState.h"

#include "app/UserPreferences.h"
#include "notes/NotesStoring.h"
#include "platform/DefaultsStore.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

const QString acknowledgedKey = DefaultsKey::acknowledgedNotesFile.toString();

QString readable(const QString &path)
{
    const QString home = QDir::homePath() + u'/';
    return path.startsWith(home) ? u"~/"_s + path.mid(home.size()) : path;
}

} // namespace

NotesFileState::NotesFileState(const NotesStoring &store, DefaultsStore &defaults, QObject *parent)
    : QObject(parent)
    , store_(store)
    , defaults_(defaults)
{
    connect(&store_, &NotesStoring::filesChanged, this, &NotesFileState::look);
    look();
}

QString NotesFileState::saveFailure() const
{
    return store_.saveFailure().value_or(QString());
}

void NotesFileState::look()
{
    const QStringList files = store_.unreadableFiles();
    const QString newest = files.value(0);
    unreadableName_ = QFileInfo(newest).fileName();
    const bool isKnown = unreadableName_ <= defaults_.value(acknowledgedKey).toString();
    unreadableFile_ = isKnown ? QString() : readable(newest);
    Q_EMIT changed();
}

void NotesFileState::acknowledge()
{
    defaults_.setValue(acknowledgedKey, unreadableName_);
    look();
}

} // namespace vellumo
