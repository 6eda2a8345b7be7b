// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "mainwindow/SyncReporting.h"
#include <optional>

namespace vellumo {

class NotesStoring;
class NotesSyncEngine;

/// Lets notes travel and tells how far they are.
class SyncStatus final : public SyncReporting {
    Q_OBJECT

public:
    /// Both must outlive this object.
    SyncStatus(NotesSyncEngine &engine, const NotesStoring &store);

    [[nodiscard]] bool isSyncing() const override { return passes_ > 0; }
    [[nodiscard]] int pending() const override;

    /// Sends what the backend lacks, then takes over what is new there.
    void syncNow() override;
    /// Sends what the backend lacks.
    void push();

private:
    void begin();
    void end();

    NotesSyncEngine &engine_;
    const NotesStoring &store_;
    int passes_ = 0; ///< that have not ended
    mutable std::optional<int> pending_; ///< until something changes
};

} // namespace vellumo
