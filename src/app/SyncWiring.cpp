// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/SyncWiring.h"

#include "account/AuthService.h"
#include "settings/AppConfig.h"

#include <QPointer>

namespace vellumo {

SyncWiring::SyncWiring(const Collaborators &with)
    : ownership_({.defaults = with.defaults, .auth = with.auth, .store = with.store})
    , history_({.auth = with.auth,
                .session = with.http,
                .clock = with.clock,
                .configuration =
                    [&config = with.config](const QString &key) { return config.value(key); }})
    , engine_(with.store, history_, with.auth, [this] { return ownership_.allowsSync(); })
    , status_(
          {.engine = engine_, .store = with.store, .clock = with.clock, .ownership = ownership_})
{
    // The session of an earlier run comes from a keyring that may be slow, or locked for a while.
    // Without one there is nothing to do at launch.
    connect(&with.auth, &AuthService::restored, &status_, &SyncStatus::syncNow);
    with.auth.onSignedIn = [status = QPointer(&status_)] {
        if (status) {
            status->syncNow();
        }
    };
    connect(&with.auth, &AuthService::userChanged, this, [this] { status_.forget(); });
    connect(&with.auth, &AuthService::userChanged, &ownership_, &NotesOwnership::changed);
}

} // namespace vellumo
