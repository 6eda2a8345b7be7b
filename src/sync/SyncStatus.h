// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "sync/SyncReporting.h"
#include <optional>

namespace vellumo {

class Clock;
class NotesOwnership;
class NotesStoring;
class NotesSyncEngine;

/// Runs sync passes and reports their progress.
class SyncStatus final : public SyncReporting {
    Q_OBJECT

public:
    /// All must outlive this object.
    struct Collaborators {
        NotesSyncEngine &engine;
        const NotesStoring &store;
        const Clock &clock;
        NotesOwnership &ownership;
    };

    explicit SyncStatus(const Collaborators &collaborators);

    [[nodiscard]] bool isSyncing() const override { return passes_ > 0; }
    [[nodiscard]] int pending() const override;
    [[nodiscard]] bool isWithheld() const override;
    [[nodiscard]] int arriving() const override { return arriving_; }
    [[nodiscard]] SyncError::Kind problem() const override;
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
    struct Failure {
        SyncError::Kind error = SyncError::Kind::None;
        QDateTime time;
    };

    [[nodiscard]] Failure failureNow(SyncError::Kind error) const;
    /// The one to show.
    [[nodiscard]] const Failure &failure() const;
    void begin();
    void end();
    void pullEnded();

    Collaborators with_;
    int passes_ = 0; ///< that have not ended
    mutable std::optional<int> pending_; ///< until something changes
    int arriving_ = 0;
    bool pulling_ = false;
    bool pullQueued_ = false; ///< another pull was asked for while one was running
    Failure sending_; ///< shown while notes are pending
    Failure fetching_;
    QDateTime lastFetched_;
};

} // namespace vellumo
