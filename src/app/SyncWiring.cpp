// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/SyncWiring.h"

#include "account/AuthService.h"
#include "app/AppConfig.h"

#include <QPointer>

namespace vellumo {

SyncWiring::SyncWiring(const Foundation &foundation)
    : ownership_({foundation.defaults, foundation.auth, foundation.store})
    , history_({foundation.auth, foundation.http, foundation.clock,
                [&config = foundation.config](const QString &key) { return config.value(key); }})
    , engine_(foundation.store, history_, foundation.auth,
              [this] { return ownership_.allowsSync(); })
    , status_({engine_, history_, foundation.store, foundation.clock, ownership_})
{
    // The session of an earlier run comes from a keyring that may be slow, or locked for a while.
    // Without one there is nothing to do at launch.
    foundation.auth.onRestored = [self = QPointer(this)] {
        if (self) {
            self->status_.syncNow();
        }
    };
    foundation.auth.onSignedIn = foundation.auth.onRestored;
    connect(&foundation.auth, &AuthService::userChanged, this, [this] { status_.forget(); });
    connect(&foundation.auth, &AuthService::userChanged, &ownership_, &NotesOwnership::changed);
}

} // namespace vellumo
