// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "sync/NotesOwnership.h"

#include "account/Authenticating.h"
#include "notes/NotesStoring.h"
#include "settings/SettingsKeys.h"

namespace vellumo {

bool NotesOwnership::allowsSync()
{
    const QString account = with_.auth.uid();
    if (account.isEmpty()) {
        return false;
    }
    if (settings::notesOwner.value(with_.defaults) == account) {
        withhold({});
        return true;
    }
    if (with_.store.pendingSync().isEmpty()) {
        agree();
        return true;
    }
    withhold(account);
    return false;
}

bool NotesOwnership::isWithheld() const
{
    return withheld_ && *withheld_ == with_.auth.uid();
}

bool NotesOwnership::isUnanswered() const
{
    return isWithheld() && settings::notesDeclinedFor.value(with_.defaults) != *withheld_;
}

void NotesOwnership::agree()
{
    if (const QString account = with_.auth.uid(); !account.isEmpty()) {
        settings::notesOwner.set(with_.defaults, account);
        settings::notesDeclinedFor.remove(with_.defaults);
        withhold({});
    }
}

void NotesOwnership::decline()
{
    if (isWithheld()) {
        settings::notesDeclinedFor.set(with_.defaults, *withheld_);
        Q_EMIT changed();
    }
}

void NotesOwnership::withhold(const std::optional<QString> &uid)
{
    if (withheld_ != uid) {
        withheld_ = uid;
        Q_EMIT changed();
    }
}

} // namespace vellumo
