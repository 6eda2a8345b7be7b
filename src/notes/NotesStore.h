// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/AtomicFile.h"
#include "notes/NotesStoring.h"
#include <QString>
#include <QTimer>
#include <functional>

namespace vellumo {

/// Keeps the notes in one JSON file, rewritten on every change. What others have written there
/// since, such as a restored copy or a synchronised one, is merged before it is overwritten.
class NotesStore : public NotesStoring {
    Q_OBJECT

public:
    /// Shows the user that the file cannot be used; the process ends when it returns.
    using Farewell = std::function<void(const QString &file)>;

    /// Loads the file. A file that cannot be read or decoded leaves the store empty and is set
    /// aside before the first save. Two buckets with the same key end the process.
    explicit NotesStore(QString storeURL, const Farewell &farewell = {}, QObject *parent = nullptr);
    /// Saves what is left of the bookkeeping, and tries again what could not be saved.
    ~NotesStore() override;
    Q_DISABLE_COPY_MOVE(NotesStore)

    /// Where the notes of this user live.
    [[nodiscard]] static QString defaultStorePath();

    void add(const ReadingNote &note, const ReadingContext &context) override;
    void update(const ReadingNote &note, const ReadingContext &context) override;
    [[nodiscard]] qsizetype noteCount() const override;
    [[nodiscard]] QList<ReadingNote> allNotes() const override;
    [[nodiscard]] QList<NoteWithContext> allNotesWithContexts() const override;
    [[nodiscard]] std::optional<NoteWithContext> find(const QUuid &id) const override;
    [[nodiscard]] QList<PendingNote> pendingSync() const override;
    [[nodiscard]] qsizetype unknownCount(const QList<ReadingNote> &notes) const override;
    void mergeRemote(const QList<ReadingNote> &notes) override;
    /// Bookkeeping is gathered for 200 ms and 50 ms more for each megabyte of the file, since each
    /// save writes all of it and waits for the disk. Any other save takes it along.
    void markSynced(const QUuid &noteId, qint64 followUpCount) override;
    [[nodiscard]] QStringList unreadableFiles() const override;
    [[nodiscard]] std::optional<QString> saveFailure() const override { return saveFailure_; }
    void retrySave() override;

private:
    struct Place {
        const StoredNotesBucket *bucket;
        const ReadingNote *note;
    };

    [[nodiscard]] std::optional<StoreFile> read();
    void load(const Farewell &farewell);
    void takeOverOutsideChange();
    void save(Durability durability);
    void saveAndAnnounce(Durability durability);
    void bucketChanged(const QString &key);
    [[nodiscard]] QList<QByteArray> encoded();
    [[nodiscard]] std::optional<QString> trySave(Durability durability);
    [[nodiscard]] QList<Place> placesNewestFirst() const;
    [[nodiscard]] QList<ReadingNote> unknown(const QList<ReadingNote> &notes) const;

    QHash<QString, StoredNotesBucket> bucketsByContextKey_;
    NoteSyncStates syncStates_;
    QHash<QString, QByteArray> encodedBuckets_; ///< of the buckets unchanged since the last save
    QString storeURL_;
    qint64 fileSize_ = 0; ///< in bytes, of what was last loaded or saved
    std::optional<FileIdentity> known_; ///< of the file whose content is in memory
    bool hasTakenOver_ = false; ///< notes from outside, which has not been announced
    QTimer bookkeepingTimer_; ///< runs while there is bookkeeping to be saved
    std::optional<QString> saveFailure_;
    bool hasUnreadableFile_ = false; ///< what is under storeURL_ must not be overwritten
};

} // namespace vellumo
