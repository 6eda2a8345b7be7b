// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// Changes the keyring of a private desktop as its user and the desktop's tools do.
namespace vellumo::test::Keyring {

/// Stores vellumo's item of this account with the desktop's tool; in the default collection, if no
/// other is named.
void store(const QString &account, const QByteArray &value, const QString &collection = {});
[[nodiscard]] QByteArray lookUp(const QString &account);
/// Counts the account's items in open collections.
[[nodiscard]] int count(const QString &account);

bool lock();
bool unlock();
void signal(int number);

} // namespace vellumo::test::Keyring
