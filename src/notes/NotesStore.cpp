// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/NotesStore.h"

#include "notes/StoreMerge.h"
#include "platform/Diagnostics.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr qint64 megabyte = 1'000'000;
// Limits saving to less than a tenth of the time of a long sync.
constexpr auto gathering = 200ms;
constexpr auto gatheringPerMegabyte = 50ms;

QString lowerIdText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces);
}

QString contentKey(const ReadingNote &note)
{
    return note.sourceText + QChar(u'\u0001') + note.explanation;
}

} // namespace

NotesStore::NotesStore(QString storeURL, const Farewell &farewell, QObject *parent)
    : NotesStoring(parent)
    , file_(std::move(storeURL))
    , deleted_(QFileInfo(file_.path()).absolutePath() + u"/deleted-notes"_s)
{
    bookkeepingTimer_.setSingleShot(true);
    bookkeepingTimer_.callOnTimeout(this, [this] { saveAndAnnounce(Durability::Ordinary); });
    load(farewell);
}

NotesStore::~NotesStore()
{
    if (saveFailure_) {
        save(Durability::Synced);
    } else if (bookkeepingTimer_.isActive()) {
        save(Durability::Ordinary);
    }
}

QString NotesStore::defaultStorePath()
{
    QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (base.isEmpty()) {
        base = QDir::tempPath();
    }
    return base + u"/vellumo/notes.json"_s;
}

void NotesStore::load(const Farewell &farewell)
{
    const auto file = file_.read();
    if (!file) {
        return;
    }
    if (file->hasTwinBuckets()) {
        // Keeping either bucket would lose the other's notes with the next save.
        printDiagnostic(u"%1 holds two buckets with one key"_s.arg(file_.path()));
        if (farewell) {
            farewell(file_.path());
        }
        std::_Exit(EXIT_FAILURE); // without cleanup: there is nothing to save yet
    }
    for (const StoredNotesBucket &bucket : file->buckets) {
        bucketsByContextKey_.insert(bucket.context.key, bucket);
        for (const ReadingNote &note : bucket.notes) {
            deleted_.remove(note.id); // the user has put an older file in place
        }
    }
    syncStates_ = file->syncStates.value_or(NoteSyncStates());
}

void NotesStore::takeOverOutsideChange()
{
    auto theirs = file_.readOutsideChange();
    if (!theirs) {
        return;
    }
    for (StoredNotesBucket &bucket : theirs->buckets) {
        bucket.notes.removeIf([this](const ReadingNote &note) { return isDeleted(note.id); });
    }
    const QSet<QString> changed = mergeStoreFile(bucketsByContextKey_, syncStates_, *theirs);
    for (const QString &key : changed) {
        encodedBuckets_.remove(key);
    }
    hasTakenOver_ = hasTakenOver_ || !changed.isEmpty();
}

void NotesStore::save(Durability durability)
{
    bookkeepingTimer_.stop();
    const bool wasUnreadable = file_.isUnreadable();
    const auto failure = trySave(durability);
    if (failure) {
        printLine(u"vellumo could not save notes: "_s + *failure);
    }
    if (std::exchange(saveFailure_, failure) != failure || file_.isUnreadable() != wasUnreadable) {
        Q_EMIT filesChanged();
    }
}

std::optional<QString> NotesStore::trySave(Durability durability)
{
    if (auto failure = file_.makeFolder()) {
        return failure;
    }
    takeOverOutsideChange();
    // A crash in between may bring a deleted note back, and never loses a restored one.
    const auto failure = file_.write(encoded(), durability);
    const auto deletedFailure = deleted_.save();
    return failure ? failure : deletedFailure;
}

void NotesStore::saveAndAnnounce(Durability durability)
{
    save(durability);
    if (std::exchange(hasTakenOver_, false)) {
        Q_EMIT vellumoNotesDidChange();
    }
}

void NotesStore::retrySave()
{
    if (saveFailure_) {
        saveAndAnnounce(Durability::Synced);
    }
}

QStringList NotesStore::unreadableFiles() const
{
    return file_.unreadableFiles();
}

void NotesStore::bucketsChanged(const QSet<QString> &keys)
{
    for (const QString &key : keys) {
        encodedBuckets_.remove(key);
    }
    save(Durability::Synced);
    hasTakenOver_ = false;
    Q_EMIT vellumoNotesDidChange();
}

QList<QByteArray> NotesStore::encoded()
{
    QList<QByteArray> buckets;
    buckets.reserve(bucketsByContextKey_.size());
    for (auto bucket = bucketsByContextKey_.cbegin(); bucket != bucketsByContextKey_.cend();
         ++bucket) {
        QByteArray &cached = encodedBuckets_[bucket.key()];
        if (cached.isEmpty()) {
            cached = encodedBucket(*bucket);
        }
        buckets.append(cached);
    }
    return encodedStoreFile(buckets, syncStates_);
}

void NotesStore::insert(const ReadingNote &note, const ReadingContext &context, NoteSyncState state)
{
    auto bucket = bucketsByContextKey_.find(context.key);
    if (bucket == bucketsByContextKey_.end()) {
        bucket = bucketsByContextKey_.insert(context.key, {context, {}});
    }
    bucket->notes.append(note);
    syncStates_[noteIdText(note.id)] = state;
}

void NotesStore::add(const ReadingNote &note, const ReadingContext &context)
{
    insert(note, context, {});
    bucketsChanged({context.key});
}

void NotesStore::update(const ReadingNote &note, const ReadingContext &context)
{
    const auto bucket = bucketsByContextKey_.find(context.key);
    if (bucket == bucketsByContextKey_.end()) {
        return;
    }
    const auto stored =
        std::find_if(bucket->notes.begin(), bucket->notes.end(),
                     [&note](const ReadingNote &candidate) { return candidate.id == note.id; });
    if (stored == bucket->notes.end()) {
        return;
    }
    *stored = note;
    bucketsChanged({context.key});
}

QList<DeletedNote> NotesStore::remove(const QSet<QUuid> &ids)
{
    QList<DeletedNote> removed;
    QSet<QString> changed;
    for (StoredNotesBucket &bucket : bucketsByContextKey_) {
        bucket.notes.removeIf([&](const ReadingNote &note) {
            if (!ids.contains(note.id)) {
                return false;
            }
            removed.append({{note, bucket.context}, syncStates_.value(noteIdText(note.id))});
            changed.insert(bucket.context.key);
            return true;
        });
    }
    for (const DeletedNote &note : std::as_const(removed)) {
        syncStates_.remove(noteIdText(note.entry.note.id));
        deleted_.insert(note.entry.note.id);
    }
    bucketsByContextKey_.removeIf(
        [](QHash<QString, StoredNotesBucket>::iterator bucket) { return bucket->notes.isEmpty(); });
    if (!removed.isEmpty()) {
        bucketsChanged(changed);
    }
    return removed;
}

void NotesStore::restore(const QList<DeletedNote> &notes)
{
    QSet<QString> changed;
    for (const DeletedNote &note : notes) {
        if (isDeleted(note.entry.note.id)) {
            insert(note.entry.note, note.entry.context, note.state);
            changed.insert(note.entry.context.key);
        }
    }
    for (const DeletedNote &note : notes) {
        deleted_.remove(note.entry.note.id);
    }
    if (!changed.isEmpty()) {
        bucketsChanged(changed);
    }
}

qsizetype NotesStore::noteCount() const
{
    return std::accumulate(bucketsByContextKey_.cbegin(), bucketsByContextKey_.cend(), qsizetype{0},
                           [](qsizetype count, const StoredNotesBucket &bucket) {
                               return count + bucket.notes.size();
                           });
}

QList<NotesStore::Place> NotesStore::placesNewestFirst() const
{
    QList<Place> places;
    places.reserve(noteCount());
    for (const StoredNotesBucket &bucket : bucketsByContextKey_) {
        for (const ReadingNote &note : bucket.notes) {
            places.append({&bucket, &note});
        }
    }
    std::stable_sort(places.begin(), places.end(), [](const Place &a, const Place &b) {
        return a.note->createdAt > b.note->createdAt;
    });
    return places;
}

QList<ReadingNote> NotesStore::allNotes() const
{
    const QList<Place> places = placesNewestFirst();
    QList<ReadingNote> notes;
    notes.reserve(places.size());
    for (const Place &place : places) {
        notes.append(*place.note);
    }
    return notes;
}

QList<NoteWithContext> NotesStore::allNotesWithContexts() const
{
    const QList<Place> places = placesNewestFirst();
    QList<NoteWithContext> notes;
    notes.reserve(places.size());
    for (const Place &place : places) {
        notes.append({*place.note, place.bucket->context});
    }
    return notes;
}

std::optional<NoteWithContext> NotesStore::find(const QUuid &id) const
{
    Place found{};
    for (const StoredNotesBucket &bucket : bucketsByContextKey_) {
        for (const ReadingNote &note : bucket.notes) {
            if (note.id == id
                && (found.note == nullptr || note.createdAt > found.note->createdAt)) {
                found = {&bucket, &note};
            }
        }
    }
    return found.note != nullptr
        ? std::optional(NoteWithContext{*found.note, found.bucket->context})
        : std::nullopt;
}

QList<PendingNote> NotesStore::pendingSync() const
{
    QList<PendingNote> pending;
    for (const StoredNotesBucket &bucket : bucketsByContextKey_) {
        for (const ReadingNote &note : bucket.notes) {
            const NoteSyncState state = syncStates_.value(noteIdText(note.id));
            if (!state.created || state.syncedFollowUpCount < note.followUps.size()) {
                pending.append({note, state});
            }
        }
    }
    return pending;
}

QList<ReadingNote> NotesStore::unknown(const QList<ReadingNote> &notes) const
{
    QSet<QString> knownIds;
    QSet<QString> knownContents;
    for (const StoredNotesBucket &bucket : bucketsByContextKey_) {
        for (const ReadingNote &note : bucket.notes) {
            knownIds.insert(lowerIdText(note.id));
            knownContents.insert(contentKey(note));
        }
    }

    QList<ReadingNote> unknown;
    for (const ReadingNote &note : notes) {
        // `knownContents` stays that of before the merge: two notes from the server may have the
        // same content.
        if (isDeleted(note.id) || knownIds.contains(lowerIdText(note.id))
            || knownContents.contains(contentKey(note))) {
            continue;
        }
        unknown.append(note);
        knownIds.insert(lowerIdText(note.id));
    }
    return unknown;
}

qsizetype NotesStore::unknownCount(const QList<ReadingNote> &notes) const
{
    return unknown(notes).size();
}

void NotesStore::mergeRemote(const QList<ReadingNote> &notes)
{
    const QList<ReadingNote> taken = unknown(notes);
    if (taken.isEmpty()) {
        return;
    }
    StoredNotesBucket cloud = bucketsByContextKey_.value(
        cloudKey, {{cloudKey, u"Synced"_s, ReadingContextSource::appWindow}, {}});
    cloud.notes.append(taken);
    for (const ReadingNote &note : taken) {
        syncStates_[noteIdText(note.id)] = {true, note.followUps.size()};
    }
    bucketsByContextKey_.insert(cloudKey, cloud);
    bucketsChanged({cloudKey});
}

void NotesStore::markSynced(const QUuid &noteId, qint64 followUpCount)
{
    if (isDeleted(noteId)) {
        return; // while it was on its way to the server
    }
    syncStates_[noteIdText(noteId)] = {true, followUpCount};
    // Lost bookkeeping costs a repeated upload, not a note.
    if (!bookkeepingTimer_.isActive()) {
        bookkeepingTimer_.start(gathering + gatheringPerMegabyte * (file_.size() / megabyte));
    }
}

} // namespace vellumo
