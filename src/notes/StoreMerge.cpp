// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/StoreMerge.h"

#include <algorithm>

namespace vellumo {

namespace {

struct Place {
    QString key;
    qsizetype index = 0;
};

/// Ids alone are not enough: reopening a note gives its follow-ups new ids.
bool isSame(const FollowUpExchange &a, const FollowUpExchange &b)
{
    return a.id == b.id || (a.question == b.question && a.answer == b.answer);
}

/// Removes an equal exchange. Returns false when there is none.
bool take(QList<FollowUpExchange> &from, const FollowUpExchange &exchange)
{
    const auto found = std::find_if(from.begin(), from.end(), [&exchange](const auto &candidate) {
        return isSame(candidate, exchange);
    });
    if (found == from.end()) {
        return false;
    }
    from.erase(found);
    return true;
}

QList<FollowUpExchange> mergedFollowUps(const QList<FollowUpExchange> &ours,
                                        const QList<FollowUpExchange> &theirs)
{
    const bool theirsLead = theirs.size() > ours.size();
    QList<FollowUpExchange> merged = theirsLead ? theirs : ours;
    QList<FollowUpExchange> unmatched = merged;
    for (const FollowUpExchange &exchange : theirsLead ? ours : theirs) {
        if (!take(unmatched, exchange)) {
            merged.append(exchange);
        }
    }
    return merged;
}

QList<FollowUpExchange> sent(const QList<FollowUpExchange> &followUps, const NoteSyncState &state)
{
    return state.created ? followUps.first(std::clamp<qsizetype>(
               static_cast<qsizetype>(state.syncedFollowUpCount), 0, followUps.size()))
                         : QList<FollowUpExchange>();
}

/// Returns how many of the merged follow-ups, from the first on, were sent by at least one side.
qint64 sentCount(const QList<FollowUpExchange> &merged, QList<FollowUpExchange> sentByOurs,
                 QList<FollowUpExchange> sentByTheirs)
{
    const auto first = std::find_if(merged.begin(), merged.end(), [&](const auto &exchange) {
        const bool isOurs = take(sentByOurs, exchange);
        const bool isTheirs = take(sentByTheirs, exchange);
        return !isOurs && !isTheirs;
    });
    return std::distance(merged.begin(), first);
}

class Merge {
public:
    Merge(QHash<QString, StoredNotesBucket> &buckets, NoteSyncStates &states,
          const NoteSyncStates &theirStates)
        : buckets_(buckets)
        , states_(states)
        , theirStates_(theirStates)
    {
        for (const StoredNotesBucket &bucket : std::as_const(buckets_)) {
            for (qsizetype i = 0; i < bucket.notes.size(); ++i) {
                places_.insert(bucket.notes.at(i).id, {bucket.context.key, i});
            }
        }
    }

    void takeOver(const StoredNotesBucket &theirs)
    {
        for (const ReadingNote &note : theirs.notes) {
            const auto place = places_.constFind(note.id);
            if (place == places_.cend()) {
                append(note, theirs.context);
            } else {
                join(note, *place);
                if (place->key == cloudKey && theirs.context.key != cloudKey) {
                    move(note.id, theirs.context);
                }
            }
        }
    }

    [[nodiscard]] QSet<QString> changed() const { return changed_; }

private:
    void append(const ReadingNote &note, const ReadingContext &context)
    {
        auto bucket = buckets_.find(context.key);
        if (bucket == buckets_.end()) {
            bucket = buckets_.insert(context.key, {context, {}});
        }
        places_.insert(note.id, {context.key, bucket->notes.size()});
        bucket->notes.append(note);
        changed_.insert(context.key);
        const QString id = noteIdText(note.id);
        if (theirStates_.contains(id)) {
            states_.insert(id, theirStates_.value(id));
        }
    }

    void join(const ReadingNote &theirs, const Place &place)
    {
        ReadingNote &ours = buckets_[place.key].notes[place.index];
        const QString id = noteIdText(ours.id);
        const NoteSyncState ourState = states_.value(id);
        const NoteSyncState theirState = theirStates_.value(id);
        const QList<FollowUpExchange> merged = mergedFollowUps(ours.followUps, theirs.followUps);
        if (ourState.created || theirState.created) {
            states_[id] = {true,
                           sentCount(merged, sent(ours.followUps, ourState),
                                     sent(theirs.followUps, theirState))};
        }
        if (merged != ours.followUps) {
            ours.followUps = merged;
            changed_.insert(place.key);
        }
    }

    void move(const QUuid &id, const ReadingContext &context)
    {
        const Place from = places_.value(id);
        StoredNotesBucket &cloud = buckets_[from.key];
        const NoteSyncState state = states_.value(noteIdText(id));
        const ReadingNote note = cloud.notes.takeAt(from.index);
        for (qsizetype i = from.index; i < cloud.notes.size(); ++i) {
            places_[cloud.notes.at(i).id].index = i;
        }
        changed_.insert(from.key);
        append(note, context);
        states_[noteIdText(id)] = state;
    }

    QHash<QString, StoredNotesBucket> &buckets_;
    NoteSyncStates &states_;
    const NoteSyncStates &theirStates_;
    QHash<QUuid, Place> places_;
    QSet<QString> changed_;
};

} // namespace

QSet<QString> mergeStoreFile(QHash<QString, StoredNotesBucket> &buckets, NoteSyncStates &states,
                             const StoreFile &theirs)
{
    static const NoteSyncStates none;
    Merge merge(buckets, states, theirs.syncStates ? *theirs.syncStates : none);
    for (const StoredNotesBucket &bucket : theirs.buckets) {
        merge.takeOver(bucket);
    }
    return merge.changed();
}

} // namespace vellumo
