// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/NotesOwnership.h"

#include "account/Authenticating.h"
#include "app/UserPreferences.h"
#include "notes/NotesStoring.h"
#include "platform/DefaultsStore.h"

namespace vellumo {

namespace {
const QString ownerKey = DefaultsKey::notesOwner.toString();
const QString declinedKey = DefaultsKey::notesDeclinedFor.toString();
} // namespace

bool NotesOwnership::allowsSync()
{
    const QString account = with_.auth.uid();
    if (account.isEmpty()) {
        return false;
    }
    if (with_.defaults.value(ownerKey).toString() == account) {
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
    return isWithheld() && with_.defaults.value(declinedKey).toString() != *withheld_;
}

void NotesOwnership::agree()
{
    if (const QString account = with_.auth.uid(); !account.isEmpty()) {
        with_.defaults.setValue(ownerKey, account);
        with_.defaults.setValue(declinedKey, {});
        withhold({});
    }
}

void NotesOwnership::decline()
{
    if (isWithheld()) {
        with_.defaults.setValue(declinedKey, *withheld_);
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
