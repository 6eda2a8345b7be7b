// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

class QDBusPendingCallWatcher;

namespace vellumo {

/// Follows the owner of a well-known name. Never blocks, and starts no service. Main thread only.
class BusName : public QObject {
    Q_OBJECT

public:
    BusName(const QDBusConnection &bus, const QString &name, QObject *parent = nullptr);

    /// Returns the owner's unique name; empty without an owner, and before the bus has answered.
    [[nodiscard]] QString owner() const { return owner_; }

Q_SIGNALS:
    /// Also emitted for the bus's first answer, with or without an owner.
    void ownerChanged();

private:
    void onAnswer(QDBusPendingCallWatcher *call);
    void setOwner(const QString &owner);

    QString owner_;
    bool hasChanged_ = false; ///< a change was reported, so that an older answer does not count
};

} // namespace vellumo
