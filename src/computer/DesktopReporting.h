// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopChange.h"
#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace vellumo {

/// Interface that reports which features of the desktop are available to vellumo.
class DesktopReporting : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool isWayland READ isWayland CONSTANT)
    Q_PROPERTY(bool hasTray READ hasTray NOTIFY changed)
    Q_PROPERTY(bool hasCompositor READ hasCompositor NOTIFY changed)
    Q_PROPERTY(bool isConnected READ isConnected NOTIFY changed)
    Q_PROPERTY(bool isConnecting READ isConnecting NOTIFY changed)
    Q_PROPERTY(Keyring keyring READ keyring NOTIFY changed)
    Q_PROPERTY(QStringList browsers READ browsers NOTIFY changed)
    Q_PROPERTY(QStringList browsersDecidingAtStart READ browsersDecidingAtStart NOTIFY changed)

public:
    enum class Keyring : quint8 { Asking, Open, Locked, Absent };
    Q_ENUM(Keyring)

    using QObject::QObject;

    [[nodiscard]] virtual bool isWayland() const = 0;
    /// Returns whether a double tap works in every window.
    [[nodiscard]] virtual bool hearsEveryTap() const = 0;
    /// Return the setting that makes the desktop report taps in every window, and the one of a
    /// shortcut that does the same as a double tap; null where none is needed. Once returned, they
    /// exist as long as this object.
    [[nodiscard]] virtual DesktopChange *tapSetting() const = 0;
    [[nodiscard]] virtual DesktopChange *shortcut() const = 0;
    /// Returns whether a tray is present.
    [[nodiscard]] virtual bool hasTray() const = 0;
    /// Returns whether a compositor runs, so that windows can have round corners and shadows.
    [[nodiscard]] virtual bool hasCompositor() const = 0;
    /// Returns whether the accessibility bus is connected. It requires the user's consent.
    [[nodiscard]] virtual bool isConnected() const = 0;
    /// Returns whether a connection attempt is in progress.
    [[nodiscard]] virtual bool isConnecting() const = 0;
    [[nodiscard]] virtual Keyring keyring() const = 0;
    /// Returns the installed browsers that always expose the address of a page.
    [[nodiscard]] virtual QStringList browsers() const = 0;
    /// Returns those that expose it only if accessibility was on when they started.
    [[nodiscard]] virtual QStringList browsersDecidingAtStart() const = 0;

    /// Reads again what does not notify changes.
    virtual void refresh() = 0;

Q_SIGNALS:
    void changed();
};

} // namespace vellumo
