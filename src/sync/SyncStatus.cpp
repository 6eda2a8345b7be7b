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

namespace {

SyncReporting::Problem problemOf(DataConnectError::Kind kind, bool isUp)
{
    using Kind = DataConnectError::Kind;
    switch (kind) {
    case Kind::notConfigured:
        return SyncReporting::Problem::NotConfigured;
    case Kind::signedOut:
        return SyncReporting::Problem::SignedOut;
    case Kind::unreachable:
        return SyncReporting::Problem::Unreachable;
    case Kind::refused:
        return SyncReporting::Problem::Refused;
    case Kind::untrusted:
        return SyncReporting::Problem::Untrusted;
    case Kind::badAddress:
        return SyncReporting::Problem::AddressNotAllowed;
    case Kind::tooLarge:
        return isUp ? SyncReporting::Problem::NoteTooLarge : SyncReporting::Problem::ListTooLarge;
    case Kind::unreadable:
        break;
    }
    return SyncReporting::Problem::Unreadable;
}

} // namespace

SyncStatus::SyncStatus(const Collaborators &collaborators) : with_(collaborators)
{
    connect(&with_.store, &NotesStoring::vellumoNotesDidChange, this, [this] {
        pending_.reset();
        Q_EMIT changed();
    });
    connect(&with_.ownership, &NotesOwnership::changed, this, &SyncReporting::changed);
    with_.history.onEnded = [this](auto direction, auto outcome) { ended(direction, outcome); };
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
    with_.history.list(this, [this](const QList<ReadingNote> &notes) {
        // On its own, or after a pull that failed, this brings nothing.
        const bool isFollowed = passes_ > 1;
        arriving_ = isFollowed ? static_cast<int>(with_.store.unknownCount(notes)) : 0;
        end();
    });
}

void SyncStatus::ended(DataConnectHistory::Direction direction, DataConnectHistory::Outcome outcome)
{
    const bool isUp = direction == DataConnectHistory::Direction::Up;
    const QDateTime now = NoteDates::localTime(with_.clock.secondsSinceReferenceDate());
    if (outcome) {
        (isUp ? sending_ : fetching_) = Trouble{problemOf(*outcome, isUp), now};
    } else if (!isUp) {
        fetching_.reset();
        lastFetched_ = now;
    }
}

std::optional<SyncStatus::Trouble> SyncStatus::trouble() const
{
    return sending_ && pending() > 0 ? sending_ : fetching_;
}

SyncReporting::Problem SyncStatus::problem() const
{
    const auto found = trouble();
    return found ? found->problem : Problem::None;
}

QDateTime SyncStatus::problemTime() const
{
    const auto found = trouble();
    return found ? found->time : QDateTime();
}

void SyncStatus::forget()
{
    sending_.reset();
    fetching_.reset();
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
    if (sending_ && pending() == 0) {
        sending_.reset(); // it has worked, and says nothing about the next note
    }
    Q_EMIT changed();
}

} // namespace vellumo
