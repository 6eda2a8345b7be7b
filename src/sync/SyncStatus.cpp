// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "sync/SyncStatus.h"

#include "notes/NoteDates.h"
#include "notes/NotesStoring.h"
#include "platform/Clock.h"
#include "sync/NotesOwnership.h"
#include "sync/NotesSyncEngine.h"

#include <utility>

namespace vellumo {

SyncStatus::SyncStatus(const Collaborators &collaborators) : with_(collaborators)
{
    connect(&with_.store, &NotesStoring::vellumoNotesDidChange, this, [this] {
        pending_.reset();
        Q_EMIT changed();
    });
    connect(&with_.ownership, &NotesOwnership::changed, this, &SyncReporting::changed);
    connect(&with_.engine, &NotesSyncEngine::uploadEnded, this, [this](SyncError::Kind error) {
        if (error != SyncError::Kind::None) {
            sending_ = failureNow(error);
        }
    });
    connect(&with_.engine, &NotesSyncEngine::listingEnded, this, [this](SyncError::Kind error) {
        fetching_ = failureNow(error);
        if (error == SyncError::Kind::None) {
            lastFetched_ = std::exchange(fetching_, {}).time;
        }
    });
}

int SyncStatus::pending() const
{
    if (!pending_) { // counted when someone wants to know: it takes a look at every note
        pending_ = static_cast<int>(with_.store.pendingSync().size());
    }
    return *pending_;
}

bool SyncStatus::isWithheld() const
{
    return with_.ownership.isWithheld();
}

void SyncStatus::uploadWithheld()
{
    with_.ownership.agree();
    syncNow();
}

void SyncStatus::syncNow()
{
    begin();
    with_.engine.pushPending(this, [this] {
        pull();
        end();
    });
}

void SyncStatus::pull()
{
    if (std::exchange(pulling_, true)) {
        pullQueued_ = true;
        return;
    }
    begin();
    with_.engine.pullAndMerge(this, [this] { pullEnded(); });
}

void SyncStatus::pullEnded()
{
    pulling_ = false;
    arriving_ = 0;
    if (std::exchange(pullQueued_, false)) {
        pull();
    }
    end();
}

void SyncStatus::push()
{
    begin();
    with_.engine.pushPending(this, [this] { end(); });
}

void SyncStatus::announceArrivals()
{
    begin();
    with_.engine.countUnknown(this, [this](qsizetype count) {
        // On its own, or after a pull that failed, this brings nothing.
        const bool isFollowed = passes_ > 1;
        arriving_ = isFollowed ? static_cast<int>(count) : 0;
        end();
    });
}

SyncStatus::Failure SyncStatus::failureNow(SyncError::Kind error) const
{
    return {error, NoteDates::localTime(with_.clock.secondsSinceReferenceDate())};
}

const SyncStatus::Failure &SyncStatus::failure() const
{
    return sending_.error != SyncError::Kind::None && pending() > 0 ? sending_ : fetching_;
}

SyncError::Kind SyncStatus::problem() const
{
    return failure().error;
}

QDateTime SyncStatus::problemTime() const
{
    return failure().time;
}

void SyncStatus::forget()
{
    sending_ = {};
    fetching_ = {};
    lastFetched_ = {};
    arriving_ = 0;
    Q_EMIT changed();
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
    if (pending() == 0) {
        sending_ = {}; // overcome; the next note starts without it
    }
    Q_EMIT changed();
}

} // namespace vellumo
