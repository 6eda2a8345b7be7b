// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "account/StoredSession.h"

#include "account/KeychainStore.h"
#include "platform/DefaultsStore.h"
#include "settings/SettingsKeys.h"

#include <QHash>
#include <array>
#include <memory>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

const QString refreshTokenAccount = u"refreshToken"_s;
const QString uidAccount = u"uid"_s;
const QString emailAccount = u"email"_s;
const std::array accounts{refreshTokenAccount, uidAccount, emailAccount};

std::optional<StoredSession::Contents> contentsOf(const QHash<QString, QString> &found)
{
    const StoredSession::Contents contents{found.value(refreshTokenAccount),
                                           found.value(uidAccount), found.value(emailAccount)};
    const bool isComplete =
        !contents.refreshToken.isEmpty() && !contents.uid.isEmpty() && found.contains(emailAccount);
    return isComplete ? std::optional(contents) : std::nullopt;
}

} // namespace

StoredSession::StoredSession(KeychainStore &keychain, DefaultsStore &defaults, Expected expected,
                             QObject *parent)
    : QObject(parent)
    , keychain_(keychain)
    , defaults_(defaults)
    , expected_(std::move(expected))
{
}

void StoredSession::read(const Completion &completion)
{
    const auto found = std::make_shared<QHash<QString, QString>>();
    const auto missing = std::make_shared<size_t>(accounts.size());
    for (const QString &account : accounts) {
        keychain_.get(account, this,
                      [account, found, missing, completion](const std::optional<QString> &text) {
                          if (text) {
                              found->insert(account, *text);
                          }
                          if (--*missing == 0) {
                              completion(contentsOf(*found));
                          }
                      });
    }
}

void StoredSession::store(const Contents &contents)
{
    ++change_;
    keychain_.set(contents.refreshToken, refreshTokenAccount);
    keychain_.set(contents.uid, uidAccount);
    keychain_.set(contents.email, emailAccount);
    confirm();
}

void StoredSession::renew(const QString &refreshToken)
{
    keychain_.set(refreshToken, refreshTokenAccount);
    confirm();
}

void StoredSession::remove()
{
    ++change_;
    for (const QString &account : accounts) {
        keychain_.remove(account);
    }
    confirm();
}

void StoredSession::recordSignOut()
{
    settings::signedOut.set(defaults_, true);
}

bool StoredSession::isSignOutPending() const
{
    return settings::signedOut.value(defaults_);
}

void StoredSession::confirm()
{
    if (!isSignOutPending()) {
        return;
    }
    const auto confirmed = [this, change = change_](bool isConfirmed) {
        if (isConfirmed && change == change_) {
            settings::signedOut.remove(defaults_);
        }
    };
    if (expected_()) {
        keychain_.get(refreshTokenAccount, this,
                      [this, confirmed](const auto &text) { confirmed(text == expected_()); });
        return;
    }
    const auto left = std::make_shared<size_t>(accounts.size());
    for (const QString &account : accounts) {
        keychain_.checkMissing(account, this, [left, confirmed](bool isMissing) {
            *left -= isMissing ? 1 : 0;
            confirmed(*left == 0);
        });
    }
}

} // namespace vellumo
