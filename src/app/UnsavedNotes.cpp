// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/UnsavedNotes.h"

#include "mainwindow/NotesFileState.h"
#include "notes/NotesStoring.h"
#include "panel/ResultPanelControlling.h"
#include "ui/BilingualText.h"

#include <QFileInfo>
#include <utility>

namespace vellumo {

UnsavedNotes::UnsavedNotes(const Collaborators &collaborators, QString folder, QObject *parent)
    : QObject(parent)
    , with_(collaborators)
    , folder_(std::move(folder))
{
    connect(&with_.store, &NotesStoring::filesChanged, this, &UnsavedNotes::look);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, &UnsavedNotes::retry);
}

void UnsavedNotes::look()
{
    unwatch();
    if (!with_.store.saveFailure()) {
        isSaid_ = false;
        return;
    }
    watch();
    // The panel may be about to close, or to show something else in place of what was saved.
    QMetaObject::invokeMethod(this, &UnsavedNotes::say, Qt::QueuedConnection);
}

void UnsavedNotes::say()
{
    const auto failure = with_.store.saveFailure();
    if (failure && !isSaid_ && !with_.panel.isOnScreen()) {
        isSaid_ = true;
        Q_EMIT noticed(IslandContent::notice(NotesFileState::unsavedText(*failure, with_.texts)));
    }
}

void UnsavedNotes::panelClosed()
{
    if (isSaid_) {
        retry();
    } else {
        // If a save has failed, then this moment: it is said before anything is tried again.
        QMetaObject::invokeMethod(this, &UnsavedNotes::say, Qt::QueuedConnection);
    }
}

void UnsavedNotes::retry()
{
    // What an attempt itself writes and removes must not lead to the next one.
    unwatch();
    with_.store.retrySave();
    if (with_.store.saveFailure()) {
        watch();
    }
}

void UnsavedNotes::watch()
{
    QFileInfo place(folder_);
    while (!place.isDir() && !place.isRoot()) {
        place = QFileInfo(place.absolutePath());
    }
    watcher_.addPath(place.absoluteFilePath());
}

void UnsavedNotes::unwatch()
{
    const QStringList watched = watcher_.directories();
    if (!watched.isEmpty()) {
        watcher_.removePaths(watched);
    }
}

} // namespace vellumo
