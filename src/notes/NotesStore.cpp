// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/NotesStore.h"

#include "files/PrivateDirectory.h"
#include "notes/StoreMerge.h"
#include "platform/Diagnostics.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
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

// Renames the file to a unique name in the same folder.
const QString unreadableSuffix = u".unreadable-"_s;

std::optional<QString> setAside(const QString &path)
{
    const QString stamp = QDateTime::currentDateTimeUtc().toString(u"yyyyMMdd'T'HHmmsszzz'Z'"_s);
    QFile file(path);
    if (file.rename(path + unreadableSuffix + stamp)) {
        return std::nullopt;
    }
    return u"cannot set the unreadable %1 aside: %2"_s.arg(path, file.errorString());
}

} // namespace

NotesStore::NotesStore(QString storeURL, const Farewell &farewell, QObject *parent)
    : NotesStoring(parent)
    , storeURL_(std::move(storeURL))
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

std::optional<StoreFile> NotesStore::read()
{
    QFile file(storeURL_);
    // Open regular files only: opening a pipe would block until there is a writer.
    if (!QFileInfo(storeURL_).isFile() || !file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    known_ = fileIdentity(file.handle());
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        return std::nullopt;
    }
    fileSize_ = bytes.size();
    return StoreFile::decode(bytes);
}

void NotesStore::load(const Farewell &farewell)
{
    const auto file = read();
    if (!file) {
        hasUnreadableFile_ = QFileInfo::exists(storeURL_);
        return;
    }
    if (file->hasTwinBuckets()) {
        // Keeping either bucket would lose the other's notes with the next save.
        printDiagnostic(u"%1 holds two buckets with one key"_s.arg(storeURL_));
        if (farewell) {
            farewell(storeURL_);
        }
        std::_Exit(EXIT_FAILURE); // without cleanup: there is nothing to save yet
    }
    for (const StoredNotesBucket &bucket : file->buckets) {
        bucketsByContextKey_.insert(bucket.context.key, bucket);
    }
    syncStates_ = file->syncStates.value_or(NoteSyncStates());
}

void NotesStore::takeOverOutsideChange()
{
    if (!QFileInfo::exists(storeURL_)) {
        hasUnreadableFile_ = false;
        return;
    }
    // A file that was unreadable may have become readable without a change of its identity.
    if (!hasUnreadableFile_ && fileIdentity(storeURL_) == known_) {
        return;
    }
    const auto theirs = read();
    hasUnreadableFile_ = !theirs || theirs->hasTwinBuckets();
    if (hasUnreadableFile_) {
        return;
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
    const bool hadUnreadableFile = hasUnreadableFile_;
    const auto failure = trySave(durability);
    if (failure) {
        printLine(u"vellumo could not save notes: "_s + *failure);
    }
    if (std::exchange(saveFailure_, failure) != failure
        || hasUnreadableFile_ != hadUnreadableFile) {
        Q_EMIT filesChanged();
    }
}

std::optional<QString> NotesStore::trySave(Durability durability)
{
    if (auto failure = makePrivateDirectory(QFileInfo(storeURL_).absolutePath())) {
        return failure->text();
    }
    takeOverOutsideChange();
    if (hasUnreadableFile_) {
        if (auto failure = setAside(storeURL_)) {
            return failure;
        }
        hasUnreadableFile_ = false;
    }
    const QList<QByteArray> pieces = encoded();
    fileSize_ =
        std::accumulate(pieces.cbegin(), pieces.cend(), qint64{0},
                        [](qint64 size, const QByteArray &piece) { return size + piece.size(); });
    AtomicFile file(storeURL_,
                    {.durability = durability,
                     .mode = AtomicFile::Mode::Private,
                     .temporary = AtomicFile::Temporary::Fixed});
    for (const QByteArray &piece : pieces) {
        file.write(piece);
    }
    const bool isSaved = file.commit();
    if (file.written()) {
        known_ = file.written();
    }
    return isSaved ? std::nullopt : std::optional(file.error()->text());
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
    const QFileInfo file(storeURL_);
    QStringList found;
    if (hasUnreadableFile_) {
        found.append(storeURL_);
    }
    // The names contain the time, so that they sort by it.
    const QStringList names = file.dir().entryList({file.fileName() + unreadableSuffix + u'*'},
                                                   QDir::Files, QDir::Name | QDir::Reversed);
    for (const QString &name : names) {
        found.append(file.dir().filePath(name));
    }
    return found;
}

void NotesStore::bucketChanged(const QString &key)
{
    encodedBuckets_.remove(key);
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

void NotesStore::add(const ReadingNote &note, const ReadingContext &context)
{
    auto bucket = bucketsByContextKey_.find(context.key);
    if (bucket == bucketsByContextKey_.end()) {
        bucket = bucketsByContextKey_.insert(context.key, {context, {}});
    }
    bucket->notes.append(note);
    syncStates_[noteIdText(note.id)] = {};
    bucketChanged(context.key);
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
    bucketChanged(context.key);
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
        if (knownIds.contains(lowerIdText(note.id)) || knownContents.contains(contentKey(note))) {
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
    bucketChanged(cloudKey);
}

void NotesStore::markSynced(const QUuid &noteId, qint64 followUpCount)
{
    syncStates_[noteIdText(noteId)] = {true, followUpCount};
    // Lost bookkeeping costs a repeated upload, not a note.
    if (!bookkeepingTimer_.isActive()) {
        bookkeepingTimer_.start(gathering + gatheringPerMegabyte * (fileSize_ / megabyte));
    }
}

} // namespace vellumo
