// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "sync/DataConnectHistory.h"
#include "sync/NotesOwnership.h"
#include "sync/NotesSyncEngine.h"
#include "sync/SyncStatus.h"

namespace vellumo {

class AppConfig;
class AuthService;

/// The way of the notes to the backend and back, and the occasions on which they take it: when the
/// session of an earlier run is there, after a sign-in, and when a note has been saved.
class SyncWiring : public QObject {
    Q_OBJECT

public:
    /// All must outlive the wiring, which takes the service's callbacks.
    struct Collaborators {
        const AppConfig &config;
        AuthService &auth;
        NotesStoring &store;
        HttpSession &http;
        Clock &clock;
        DefaultsStore &defaults;
    };

    explicit SyncWiring(const Collaborators &with);

    [[nodiscard]] const DataConnectHistory &history() const { return history_; }
    [[nodiscard]] NotesSyncEngine &engine() { return engine_; }

    [[nodiscard]] SyncStatus &status() { return status_; }
    [[nodiscard]] NotesOwnership &ownership() { return ownership_; }

    /// A note has been saved.
    void noteSaved() { status_.push(); }

private:
    NotesOwnership ownership_;
    DataConnectHistory history_;
    NotesSyncEngine engine_;
    SyncStatus status_;
};

} // namespace vellumo
