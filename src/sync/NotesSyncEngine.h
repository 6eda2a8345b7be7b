// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include "sync/SyncError.h"
#include <QObject>
#include <QSet>
#include <QUuid>
#include <functional>
#include <memory>

namespace vellumo {

class Authenticating;
class DataConnectHistory;
class NotesStoring;

/// Synchronizes the store with the signed-in user's notes on the backend. Runs on request; notes
/// that cannot be sent stay pending until the next one. Touches neither store nor network while
/// signed out.
///
/// Completions run exactly once, on the main thread and never before the call returns, whether the
/// work succeeded or not; never after `context` or the engine is destroyed.
class NotesSyncEngine : public QObject {
    Q_OBJECT

public:
    using Done = std::function<void()>;
    /// Whether the notes in the store and those of the signed-in account may meet. Asked before
    /// each push and each pull, and only while a user is signed in.
    using Permission = std::function<bool()>;

    /// What is handed over must outlive the engine. Without a permission they always may.
    NotesSyncEngine(NotesStoring &store, const DataConnectHistory &history, Authenticating &auth,
                    Permission mayTravel = {}, QObject *parent = nullptr);
    ~NotesSyncEngine() override;
    Q_DISABLE_COPY_MOVE(NotesSyncEngine)

    /// Sends what the backend lacks, one note at a time. Ends at the first failure that would meet
    /// every note: no connection, no session. A note refused for its size is not sent again. While
    /// that is under way already, any number of calls make one more pass after it, and each of them
    /// is completed at once.
    void pushPending(QObject *context, Done completion);
    void pushPending() { pushPending(this, {}); }

    /// Takes over the notes from the backend that the store does not know.
    void pullAndMerge(QObject *context, Done completion);
    void pullAndMerge() { pullAndMerge(this, {}); }

    /// Lists the backend's notes and completes with how many of them the store does not know; zero
    /// after a failure.
    void countUnknown(QObject *context, const std::function<void(qsizetype count)> &completion);

Q_SIGNALS:
    /// The result of each sent note or follow-up and of each listing, before the completion it
    /// belongs to. Not emitted once another account has signed in.
    void uploadEnded(vellumo::SyncError::Kind error);
    void listingEnded(vellumo::SyncError::Kind error);

private:
    class PushPass;

    using Notes = QList<ReadingNote>;

    void passEnded();
    void list(const std::function<void(const Notes &notes)> &then);
    [[nodiscard]] bool mayTravel() const;

    NotesStoring &store_;
    const DataConnectHistory &history_;
    Authenticating &auth_;
    Permission mayTravel_;
    QSet<QUuid> tooLarge_; ///< notes that the backend does not take
    bool pushing_ = false;
    bool pushQueued_ = false; ///< another push was asked for while one was running
    std::unique_ptr<PushPass> pass_; ///< the one that is running
};

} // namespace vellumo
