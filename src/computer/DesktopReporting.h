// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopChange.h"
#include "platform/SessionRoads.h"
#include <QObject>
#include <QStringList>

namespace vellumo {

/// Interface that reports which features of the desktop are available to vellumo.
class DesktopReporting : public QObject {
    Q_OBJECT

public:
    enum class Keyring : quint8 { Asking, Open, Locked, Absent };

    using QObject::QObject;

    [[nodiscard]] virtual bool isWayland() const = 0;
    /// Returns whether a double tap works in every window.
    [[nodiscard]] virtual bool hearsEveryTap() const = 0;
    /// Return the setting and the extension that make the desktop report taps in every window, and
    /// the setting of a shortcut that does the same as a double tap; null where none is needed.
    /// Once returned, they exist as long as this object.
    [[nodiscard]] virtual DesktopChange *tapSetting() const = 0;
    [[nodiscard]] virtual DesktopChange *extension() const = 0;
    [[nodiscard]] virtual DesktopChange *shortcut() const = 0;
    [[nodiscard]] virtual SessionRoads roads() const = 0;
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
