// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/DeletedNotes.h"
#include "notes/NotesFile.h"
#include "notes/NotesStoring.h"
#include <QString>
#include <QTimer>
#include <functional>

namespace vellumo {

/// Keeps the notes in one JSON file, rewritten on every change. Changes by other programs, such as
/// a restored or synchronised copy, are merged before the file is overwritten. The ids of deleted
/// notes are in a file of their own beside it.
class NotesStore : public NotesStoring {
    Q_OBJECT

public:
    /// Tells the user that the file cannot be used. The process ends when it returns.
    using Farewell = std::function<void(const QString &file)>;

    /// Loads the file. A file that cannot be read or decoded leaves the store empty and is set
    /// aside before the first save. Two buckets with the same key end the process.
    explicit NotesStore(QString storeURL, const Farewell &farewell = {}, QObject *parent = nullptr);
    /// Saves pending bookkeeping, and repeats a failed save.
    ~NotesStore() override;
    Q_DISABLE_COPY_MOVE(NotesStore)

    /// Returns the path of the user's notes file.
    [[nodiscard]] static QString defaultStorePath();

    void add(const ReadingNote &note, const ReadingContext &context) override;
    void update(const ReadingNote &note, const ReadingContext &context) override;
    QList<DeletedNote> remove(const QSet<QUuid> &ids) override;
    void restore(const QList<DeletedNote> &notes) override;
    [[nodiscard]] bool isDeleted(const QUuid &id) const override { return deleted_.contains(id); }
    [[nodiscard]] qsizetype noteCount() const override;
    [[nodiscard]] QList<ReadingNote> allNotes() const override;
    [[nodiscard]] QList<NoteWithContext> allNotesWithContexts() const override;
    [[nodiscard]] std::optional<NoteWithContext> find(const QUuid &id) const override;
    [[nodiscard]] QList<PendingNote> pendingSync() const override;
    [[nodiscard]] qsizetype unknownCount(const QList<ReadingNote> &notes) const override;
    void mergeRemote(const QList<ReadingNote> &notes) override;
    /// Bookkeeping is collected for 200 ms, and 50 ms more for each megabyte of the file, since
    /// each save writes the whole file and waits for the disk. Any other save includes it.
    void markSynced(const QUuid &noteId, qint64 followUpCount) override;
    [[nodiscard]] QStringList unreadableFiles() const override;
    [[nodiscard]] std::optional<QString> saveFailure() const override { return saveFailure_; }
    void retrySave() override;

private:
    struct Place {
        const StoredNotesBucket *bucket;
        const ReadingNote *note;
    };

    void load(const Farewell &farewell);
    void takeOverOutsideChange();
    void save(Durability durability);
    void saveAndAnnounce(Durability durability);
    void insert(const ReadingNote &note, const ReadingContext &context, NoteSyncState state);
    void bucketsChanged(const QSet<QString> &keys);
    [[nodiscard]] QList<QByteArray> encoded();
    [[nodiscard]] std::optional<QString> trySave(Durability durability);
    [[nodiscard]] QList<Place> placesNewestFirst() const;
    [[nodiscard]] QList<ReadingNote> unknown(const QList<ReadingNote> &notes) const;

    QHash<QString, StoredNotesBucket> bucketsByContextKey_;
    NoteSyncStates syncStates_;
    QHash<QString, QByteArray> encodedBuckets_; ///< buckets unchanged since the last save, by key
    NotesFile file_;
    DeletedNotes deleted_;
    bool hasTakenOver_ = false; ///< notes of another program were merged but not announced yet
    QTimer bookkeepingTimer_; ///< runs while bookkeeping is pending
    std::optional<QString> saveFailure_;
};

} // namespace vellumo
