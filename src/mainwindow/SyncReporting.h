// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

/// How the notes of a signed-in user travel, for those who show it.
class SyncReporting : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isSyncing READ isSyncing NOTIFY changed)
    Q_PROPERTY(int pending READ pending NOTIFY changed)

public:
    using QObject::QObject;

    [[nodiscard]] virtual bool isSyncing() const = 0;
    /// How many notes the backend does not have, or not with all their follow-ups.
    [[nodiscard]] virtual int pending() const = 0;

    Q_INVOKABLE virtual void syncNow() = 0;

Q_SIGNALS:
    void changed();
};

} // namespace vellumo
