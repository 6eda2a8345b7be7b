// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SessionRoads.h"
#include <QObject>
#include <QString>
#include <memory>
#include <optional>

namespace vellumo {

class AtspiBus;
class ClipboardText;
class EventMonitoring;
class KeyPosting;
class Pasteboard;
class PrimarySelection;
class SessionBus;
class TapSource;
class Workspace;
class X11Backend;

/// What replaces parts of the X11 backend in a Wayland session, where XWayland shows only its own
/// windows. Main thread only.
class WaylandSession : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] virtual EventMonitoring &events() = 0;
    [[nodiscard]] virtual Workspace &workspace() = 0;
    [[nodiscard]] virtual PrimarySelection &primarySelection() = 0;
    [[nodiscard]] virtual Pasteboard &pasteboard() = 0;
    [[nodiscard]] virtual KeyPosting &keyPosting() = 0;
    [[nodiscard]] virtual ClipboardText &clipboardText() = 0;

    /// Returns the title of the window in front; absent if it does not belong to the process.
    [[nodiscard]] virtual std::optional<QString> windowTitle(qint64 processIdentifier) = 0;

    /// Returns whether taps in every window are reported now.
    [[nodiscard]] virtual bool hearsEveryTap() const = 0;

    /// Returns the ways in which this session works now, without `windows`.
    [[nodiscard]] virtual SessionRoads roads() = 0;

    /// Adds a source of taps to those of the session, which must outlive the session.
    virtual void addTaps(TapSource &source) = 0;

    /// Returns null when the program was built without Wayland. All references must outlive the
    /// session. `clientModule` is the path of the module that is a Wayland client.
    [[nodiscard]] static std::unique_ptr<WaylandSession> make(X11Backend &x11, SessionBus &session,
                                                              AtspiBus &accessibility,
                                                              const QString &clientModule);

Q_SIGNALS:
    /// Emitted when hearsEveryTap() may have changed.
    void reachChanged();
};

} // namespace vellumo
