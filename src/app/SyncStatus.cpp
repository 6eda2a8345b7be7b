// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/SyncStatus.h"

#include "notes/NotesStoring.h"
#include "notes/NotesSyncEngine.h"

namespace vellumo {

SyncStatus::SyncStatus(NotesSyncEngine &engine, const NotesStoring &store)
    : engine_(engine)
    , store_(store)
{
    connect(&store_, &NotesStoring::vellumoNotesDidChange, this, [this] {
        pending_.reset();
        Q_EMIT changed();
    });
}

int SyncStatus::pending() const
{
    if (!pending_) { // counted when someone wants to know: it takes a look at every note
        pending_ = static_cast<int>(store_.pendingSync().size());
    }
    return *pending_;
}

void SyncStatus::syncNow()
{
    begin();
    engine_.pushPending(this, [this] { engine_.pullAndMerge(this, [this] { end(); }); });
}

void SyncStatus::push()
{
    begin();
    engine_.pushPending(this, [this] { end(); });
}

void SyncStatus::begin()
{
    ++passes_;
    Q_EMIT changed();
}

void SyncStatus::end()
{
    --passes_;
    pending_.reset();
    Q_EMIT changed();
}

} // namespace vellumo
