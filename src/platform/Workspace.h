// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QUrl>
#include <optional>

namespace vellumo {

struct RunningApplication {
    qint64 processIdentifier = 0; ///< 0 for a process of another machine
    std::optional<QString> localizedName; ///< the name the desktop shows for it
    std::optional<QString> bundleIdentifier; ///< its .desktop id without the suffix
    /// Whether it edits text or source code, according to its .desktop file.
    bool isTextEditor = false;
    friend bool operator==(const RunningApplication &, const RunningApplication &) = default;
};

/// The applications of the session. Our own windows, and times without an active window, never
/// change the frontmost application. Main thread only.
class Workspace : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Returns the application in front; absent before the first activation of a foreign window.
    [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() = 0;

    /// Suppresses didActivateApplication() for activations before this call, however late the
    /// window system delivers them.
    virtual void skipPastActivations() = 0;

    /// Returns whether an unmanaged window covers the whole screen, as that of a simple screen
    /// locker.
    [[nodiscard]] virtual bool isScreenCovered() = 0;

    /// Returns whether one of our own windows has the keyboard.
    [[nodiscard]] virtual bool isOwnWindowActive() const = 0;

    /// Returns the selected text of our own focused text field; empty when there is none or the
    /// field holds a secret.
    [[nodiscard]] virtual QString ownSelectedText() const = 0;

    /// Opens a web address (https or http) in the browser. Returns false for any other address, and
    /// when no browser could be started.
    virtual bool openUrl(const QUrl &url) = 0;

    /// Opens a folder, given by its absolute path, in the file manager. Returns false when none
    /// could be started.
    virtual bool openFolder(const QString &path) = 0;

    /// Opens the accessibility page of the desktop's settings. Returns false when there is none.
    virtual bool openAccessibilitySettings() = 0;

Q_SIGNALS:
    /// Emitted when another foreign process comes to the front.
    void didActivateApplication(qint64 processIdentifier);

    /// Emitted when frontmostApplication() returns another name or identifier for the same window:
    /// the window in front has changed its properties, or the window system has reported its
    /// process late, after skipPastActivations(). May be emitted during that call.
    void didRenameFrontmostApplication();
};

} // namespace vellumo
