// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "sync/NotesSyncEngine.h"

#include "account/Authenticating.h"
#include "notes/NotesStoring.h"
#include "sync/DataConnectHistory.h"

#include <QPointer>
#include <algorithm>
#include <utility>

namespace vellumo {

/// Sends the notes that were pending when it began, each as it was then, except those deleted
/// since.
class NotesSyncEngine::PushPass : public QObject {
public:
    /// onEnded runs from the event loop, since a pass with nothing to send ends at once.
    PushPass(NotesSyncEngine &engine, Done onEnded)
        : engine_(engine)
        , store_(engine.store_)
        , history_(engine.history_)
        , auth_(engine.auth_)
        , uid_(engine.auth_.uid())
        , tooLarge_(engine.tooLarge_)
        , pending_(engine.store_.pendingSync())
        , onEnded_(std::move(onEnded))
    {
        pending_.removeIf(
            [this](const PendingNote &pending) { return tooLarge_.contains(pending.note.id); });
    }

    void takeNext()
    {
        while (!pending_.isEmpty() && store_.isDeleted(pending_.constFirst().note.id)) {
            pending_.removeFirst();
        }
        // Another account gets its own pass.
        if (pending_.isEmpty() || auth_.uid() != uid_) {
            QMetaObject::invokeMethod(this, onEnded_, Qt::QueuedConnection);
            return;
        }
        current_ = pending_.takeFirst();
        if (current_.state.created) {
            sendFollowUps(current_.state.syncedFollowUpCount);
        } else {
            create();
        }
    }

private:
    void create()
    {
        history_.createNote(current_.note, this, [this](SyncError::Kind error) {
            report(error);
            if (error == SyncError::Kind::None && !store_.isDeleted(current_.note.id)) {
                sendFollowUps(0);
            } else {
                takeNext();
            }
        });
    }

    void sendFollowUps(qint64 synced)
    {
        const qint64 count = current_.note.followUps.size();
        const qint64 first = std::max<qint64>(synced, 0);
        if (first >= count) {
            record(count);
            return;
        }
        history_.addFollowUps(current_.note.id, current_.note.followUps.mid(first), this,
                              [this, first, count](SyncError::Kind error) {
                                  report(error);
                                  record(error == SyncError::Kind::None ? count : first);
                              });
    }

    void report(SyncError::Kind error)
    {
        if (auth_.uid() == uid_) {
            Q_EMIT engine_.uploadEnded(error);
        }
        using Kind = SyncError::Kind;
        switch (error) {
        case Kind::NotConfigured:
        case Kind::SignedOut:
        case Kind::Unreachable:
        case Kind::Untrusted:
        case Kind::AddressNotAllowed:
            pending_.clear(); // every other note would fail the same way, each after up to a minute
            break;
        case Kind::NoteTooLarge:
            tooLarge_.insert(current_.note.id);
            break;
        case Kind::None:
        case Kind::ListTooLarge:
        case Kind::Refused:
        case Kind::Unreadable:
            break;
        }
    }

    void record(qint64 followUpCount)
    {
        store_.markSynced(current_.note.id, followUpCount);
        takeNext();
    }

    NotesSyncEngine &engine_;
    NotesStoring &store_;
    const DataConnectHistory &history_;
    Authenticating &auth_;
    QString uid_;
    QSet<QUuid> &tooLarge_;
    QList<PendingNote> pending_;
    PendingNote current_;
    Done onEnded_;
};

NotesSyncEngine::NotesSyncEngine(NotesStoring &store, const DataConnectHistory &history,
                                 Authenticating &auth, Permission mayTravel, QObject *parent)
    : QObject(parent)
    , store_(store)
    , history_(history)
    , auth_(auth)
    , mayTravel_(std::move(mayTravel))
{
}

NotesSyncEngine::~NotesSyncEngine() = default;

bool NotesSyncEngine::mayTravel() const
{
    return auth_.user() && (!mayTravel_ || mayTravel_());
}

void NotesSyncEngine::pushPending(QObject *context, Done completion)
{
    const auto complete = [context = QPointer(context), completion = std::move(completion)] {
        if (context && completion) {
            completion();
        }
    };
    if (pushing_ || !mayTravel()) {
        pushQueued_ = pushQueued_ || (pushing_ && auth_.user());
        QMetaObject::invokeMethod(this, complete, Qt::QueuedConnection);
        return;
    }
    pushing_ = true;
    pass_ = std::make_unique<PushPass>(*this, [this, complete] {
        passEnded();
        complete();
    });
    pass_->takeNext();
}

void NotesSyncEngine::passEnded()
{
    pushing_ = false;
    pass_.release()->deleteLater(); // it is what calls
    if (std::exchange(pushQueued_, false)) {
        QMetaObject::invokeMethod(
            this, [this] { pushPending(); }, Qt::QueuedConnection);
    }
}

void NotesSyncEngine::pullAndMerge(QObject *context, Done completion)
{
    const auto complete = [context = QPointer(context), completion = std::move(completion)] {
        if (context && completion) {
            completion();
        }
    };
    if (!mayTravel()) {
        QMetaObject::invokeMethod(this, complete, Qt::QueuedConnection);
        return;
    }
    list([this, uid = auth_.uid(), complete](const Notes &notes) {
        const auto merge = [this, uid, complete, notes] {
            // Notes of an account that has signed out meanwhile do not belong here.
            if (!notes.isEmpty() && auth_.uid() == uid) {
                store_.mergeRemote(notes);
            }
            complete();
        };
        // Reading a long list takes as long as merging it: let pending events in between.
        QMetaObject::invokeMethod(this, merge, Qt::QueuedConnection);
    });
}

void NotesSyncEngine::countUnknown(QObject *context,
                                   const std::function<void(qsizetype count)> &completion)
{
    list([this, context = QPointer(context), completion](const Notes &notes) {
        if (context) {
            completion(store_.unknownCount(notes));
        }
    });
}

/// Lists the backend's notes; none after a failure.
void NotesSyncEngine::list(const std::function<void(const Notes &notes)> &then)
{
    history_.list(this, [this, uid = auth_.uid(), then](const auto &listed) {
        if (auth_.uid() == uid) {
            Q_EMIT listingEnded(listed.isOk() ? SyncError::Kind::None : listed.error());
        }
        then(listed.isOk() ? listed.value() : Notes());
    });
}

} // namespace vellumo
