// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/// What people and the desktop's own tools do to the keyring of a private desktop.
namespace vellumo::test::Keyring {

/// vellumo's item of this account, through the desktop's own tool; in the default collection, if no
/// other is named.
void store(const QString &account, const QByteArray &value, const QString &collection = {});
[[nodiscard]] QByteArray lookUp(const QString &account);
/// How many items the account has in open collections.
[[nodiscard]] int count(const QString &account);

bool lock();
bool unlock();
void signal(int number);

} // namespace vellumo::test::Keyring
