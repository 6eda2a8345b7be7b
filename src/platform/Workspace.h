// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QUrl>
#include <optional>

namespace vellumo {

struct RunningApplication {
    qint64 processIdentifier = 0; ///< 0 for a program of another machine
    std::optional<QString> localizedName; ///< the name the desktop shows for it
    std::optional<QString> bundleIdentifier; ///< its .desktop id without the suffix
    /// Whether it is made to edit text or programs, as its .desktop file says.
    bool isTextEditor = false;
    friend bool operator==(const RunningApplication &, const RunningApplication &) = default;
};

/// The applications of the session. Our own windows, and moments without an active window, never
/// change the frontmost application. Main thread only.
class Workspace : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] virtual std::optional<RunningApplication> frontmostApplication() = 0;

    /// Activations that have happened before this call are not announced any more, however late
    /// the window system delivers them.
    virtual void skipPastActivations() = 0;

    /// Whether a window that no window manager controls covers the whole screen, as those of simple
    /// screen lockers do.
    [[nodiscard]] virtual bool isScreenCovered() = 0;

    /// Whether one of our own windows has the keyboard.
    [[nodiscard]] virtual bool isOwnWindowActive() const = 0;

    /// Selected text of our own focused text field, empty when there is none or it is a secret.
    [[nodiscard]] virtual QString ownSelectedText() const = 0;

    /// Hands a web address (https, or http) to the browser; false for any other address, and when
    /// no browser could be started.
    virtual bool openUrl(const QUrl &url) = 0;

    /// Shows a folder, by its whole path, in the file manager; false when none could be started.
    virtual bool openFolder(const QString &path) = 0;

    /// Opens the desktop's own settings at their page on accessibility; false when it has none.
    virtual bool openAccessibilitySettings() = 0;

Q_SIGNALS:
    /// A process other than the last foreign one came to the front.
    void didActivateApplication(qint64 processIdentifier);

    /// The window in front has said more of its application: frontmostApplication() now answers
    /// another name or identifier for the same process. May be emitted while it answers.
    void didRenameFrontmostApplication();
};

} // namespace vellumo
