// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "sync/SyncError.h"
#include <QDateTime>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

/// The progress of a signed-in user's sync, for the views.
class SyncReporting : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isSyncing READ isSyncing NOTIFY changed)
    Q_PROPERTY(int pending READ pending NOTIFY changed)
    Q_PROPERTY(bool isWithheld READ isWithheld NOTIFY changed)
    Q_PROPERTY(int arriving READ arriving NOTIFY changed)
    Q_PROPERTY(vellumo::SyncError::Kind problem READ problem NOTIFY changed)
    Q_PROPERTY(QDateTime problemTime READ problemTime NOTIFY changed)
    Q_PROPERTY(QDateTime lastFetched READ lastFetched NOTIFY changed)

public:
    using QObject::QObject;

    [[nodiscard]] virtual bool isSyncing() const = 0;
    /// How many notes the backend does not have, or not with all their follow-ups.
    [[nodiscard]] virtual int pending() const = 0;
    /// Whether nothing is exchanged with this account, since the pending notes are not its own and
    /// the user has not agreed to upload them.
    [[nodiscard]] virtual bool isWithheld() const = 0;
    /// How many notes are known to be on their way here; see announceArrivals().
    [[nodiscard]] virtual int arriving() const = 0;
    /// Why the last push or pull failed. Kept until the same operation succeeds.
    [[nodiscard]] virtual SyncError::Kind problem() const = 0;
    /// Invalid without a problem.
    [[nodiscard]] virtual QDateTime problemTime() const = 0;
    /// When the backend last listed its notes; invalid before that.
    [[nodiscard]] virtual QDateTime lastFetched() const = 0;

    /// Sends what the backend lacks, then takes over what is new there.
    Q_INVOKABLE virtual void syncNow() = 0;
    /// Makes the pending notes those of this account, then syncs.
    Q_INVOKABLE virtual void uploadWithheld() = 0;
    /// Takes over what is new at the backend.
    Q_INVOKABLE virtual void pull() = 0;
    /// Lists the backend's notes to count those that the next pull will bring.
    virtual void announceArrivals() = 0;

Q_SIGNALS:
    void changed();
};

} // namespace vellumo
