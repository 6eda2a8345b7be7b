// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "sync/DataConnectHistory.h"
#include "sync/SyncReporting.h"
#include <optional>

namespace vellumo {

class NotesOwnership;
class NotesStoring;
class NotesSyncEngine;

/// Runs sync passes and reports their progress.
class SyncStatus final : public SyncReporting {
    Q_OBJECT

public:
    /// All must outlive this object, which takes the history's callback.
    struct Collaborators {
        NotesSyncEngine &engine;
        DataConnectHistory &history;
        const NotesStoring &store;
        const Clock &clock;
        NotesOwnership &ownership;
    };

    explicit SyncStatus(const Collaborators &collaborators);

    [[nodiscard]] bool isSyncing() const override { return passes_ > 0; }
    [[nodiscard]] int pending() const override;
    [[nodiscard]] bool isWithheld() const override;
    [[nodiscard]] int arriving() const override { return arriving_; }
    [[nodiscard]] Problem problem() const override;
    [[nodiscard]] QDateTime problemTime() const override;
    [[nodiscard]] QDateTime lastFetched() const override { return lastFetched_; }

    void syncNow() override;
    void uploadWithheld() override;
    /// While a pull is under way, any number of calls make one more after it.
    void pull() override;
    void announceArrivals() override;
    /// Sends what the backend lacks.
    void push();
    /// Drops the errors of the previous session.
    void forget();

private:
    struct Trouble {
        Problem problem;
        QDateTime time;
    };

    void ended(DataConnectHistory::Direction direction, DataConnectHistory::Outcome outcome);
    [[nodiscard]] std::optional<Trouble> trouble() const;
    void begin();
    void end();
    void pullEnded();

    Collaborators with_;
    int passes_ = 0; ///< that have not ended
    mutable std::optional<int> pending_; ///< until something changes
    int arriving_ = 0;
    bool pulling_ = false;
    bool pullQueued_ = false; ///< another pull was asked for while one was running
    std::optional<Trouble> sending_; ///< counts while something is left to be sent
    std::optional<Trouble> fetching_;
    QDateTime lastFetched_;
};

} // namespace vellumo
