// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusMessage>
#include <QList>
#include <QObject>

namespace vellumo {

class SessionBus;

/// What the keyring wants to ask the user before it changes an item: kept until the user may be
/// asked. Nothing here waits for an answer. Needs an open bus.
class SecretServicePrompts final : public QObject {
    Q_OBJECT

public:
    /// The bus must outlive this object.
    explicit SecretServicePrompts(SessionBus &bus, QObject *parent = nullptr);

    /// Keeps the question at this path, about this account's item.
    void add(const QString &account, const QString &path);
    /// Withdraws what is kept about an account: another change has come.
    void dismiss(const QString &account);
    /// Lets the keyring ask everything that is kept.
    void askAll();
    /// Lets the keyring ask one question now; none when the path is empty.
    void ask(const QString &path);
    /// The keyring that wanted to ask is gone.
    void forget() { questions_.clear(); }

Q_SIGNALS:
    /// The user has agreed to one of those that were kept.
    void agreed();

private Q_SLOTS:
    void onCompleted(const QDBusMessage &message);

private:
    struct Question {
        QString account;
        QString path;
    };

    SessionBus &bus_;
    QList<Question> questions_;
};

} // namespace vellumo
