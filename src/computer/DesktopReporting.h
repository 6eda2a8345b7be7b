// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

/// What this desktop offers of the things that vellumo uses, for those who show it.
class DesktopReporting : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isWayland READ isWayland CONSTANT)
    Q_PROPERTY(bool hasTray READ hasTray NOTIFY changed)
    Q_PROPERTY(bool blendsWindows READ blendsWindows NOTIFY changed)
    Q_PROPERTY(bool hearsApplications READ hearsApplications NOTIFY changed)
    Q_PROPERTY(bool isConnecting READ isConnecting NOTIFY changed)
    Q_PROPERTY(Keyring keyring READ keyring NOTIFY changed)
    Q_PROPERTY(QStringList browsers READ browsers NOTIFY changed)
    Q_PROPERTY(QStringList browsersDecidingAtStart READ browsersDecidingAtStart NOTIFY changed)

public:
    enum class Keyring : quint8 { Asking, Open, Locked, Absent };
    Q_ENUM(Keyring)

    using QObject::QObject;

    [[nodiscard]] virtual bool isWayland() const = 0;
    /// Something shows tray icons.
    [[nodiscard]] virtual bool hasTray() const = 0;
    /// A compositor runs, so that corners can be round and shadows soft.
    [[nodiscard]] virtual bool blendsWindows() const = 0;
    /// The accessibility bus is open; it is not while the user has not allowed it.
    [[nodiscard]] virtual bool hearsApplications() const = 0;
    /// It is being opened, and nothing has gone wrong so far.
    [[nodiscard]] virtual bool isConnecting() const = 0;
    [[nodiscard]] virtual Keyring keyring() const = 0;
    /// Names of the installed browsers that expose the address of a page.
    [[nodiscard]] virtual QStringList browsers() const = 0;
    /// Names of those that expose it only if accessibility was on when they started.
    [[nodiscard]] virtual QStringList browsersDecidingAtStart() const = 0;

    /// Looks again at what does not report its changes.
    virtual void refresh() = 0;

Q_SIGNALS:
    void changed();
};

} // namespace vellumo
