// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusMessage>
#include <QList>
#include <QObject>

namespace vellumo {

class SessionBus;

/// Prompts that the keyring requires before it changes an item, kept until the user may be asked.
/// Never blocks. Needs an open bus.
class SecretServicePrompts final : public QObject {
    Q_OBJECT

public:
    /// The bus must outlive this object.
    explicit SecretServicePrompts(SessionBus &bus, QObject *parent = nullptr);

    /// Keeps the prompt at this path, for this account's item.
    void add(const QString &account, const QString &path);
    /// Dismisses the prompts of an account, which a newer change replaces.
    void dismiss(const QString &account);
    /// Shows all pending prompts.
    void askAll();
    /// Shows one prompt; does nothing when the path is empty.
    void ask(const QString &path);
    /// Drops all prompts, when the keyring has gone.
    void forget() { questions_.clear(); }

Q_SIGNALS:
    /// Emitted when the user has agreed to a pending prompt.
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
