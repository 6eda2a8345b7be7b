// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusMessage>
#include <QObject>

namespace vellumo {

class SessionBus;

/// Reports changes of the keyring. Needs an open bus.
class SecretServiceWatch final : public QObject {
    Q_OBJECT

public:
    /// The bus must outlive this object.
    explicit SecretServiceWatch(SessionBus &bus, QObject *parent = nullptr);

    /// Starts watching; later calls do nothing.
    void begin();
    /// Watches this collection instead of an earlier one.
    void watchCollection(const QString &path);

Q_SIGNALS:
    /// Emitted when the keyring's process has changed or ended.
    void ownerChanged(bool isThere);
    /// Emitted when a collection was added, changed or unlocked.
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
