// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusMessage>
#include <QObject>

namespace vellumo {

class SessionBus;

/// Hears what becomes of the keyring without being asked. Needs an open bus.
class SecretServiceWatch final : public QObject {
    Q_OBJECT

public:
    /// The bus must outlive this object.
    explicit SecretServiceWatch(SessionBus &bus, QObject *parent = nullptr);

    /// Listens to the keyring from now on; once is enough.
    void begin();
    /// Listens to whether this collection is opened, and to none before it.
    void watchCollection(const QString &path);

Q_SIGNALS:
    /// Another program, or none, is the keyring now.
    void ownerChanged(bool isThere);
    /// A collection has come, has changed or was opened.
    void collectionsChanged();

private Q_SLOTS:
    void onCollections() { Q_EMIT collectionsChanged(); }
    void onPropertiesChanged(const QDBusMessage &message);

private:
    SessionBus &bus_;
    bool isWatching_ = false;
    QString collection_;
};

} // namespace vellumo
