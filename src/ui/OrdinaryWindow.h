// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QQuickWindow>
#include <QVariantMap>

class QQmlEngine;

/// Functions for the program's ordinary windows, as opposed to floating panels.
namespace vellumo {

/// Announces the ordinary windows of an engine, for code that applies to all of them, such as the
/// shortcuts of the menus.
class OrdinaryWindows final : public QObject {
    Q_OBJECT

public:
    /// Returns the object of this engine, which owns it.
    [[nodiscard]] static OrdinaryWindows &of(QQmlEngine &engine);

Q_SIGNALS:
    /// Emitted once for each new window, while it is hidden.
    void made(QWindow &window);

private:
    using QObject::QObject;
};

/// Creates the hidden window of a QML file, such as "Update/UpdateWindow", with the program's icon.
/// Returns null, after a diagnostic line, when that fails. C++ owns the window; an owner deletes it
/// at the latest. The engine needs the import path of prepareEngine().
[[nodiscard]] QQuickWindow *makeOrdinaryWindow(QQmlEngine &engine, const QString &file,
                                               const QVariantMap &properties,
                                               QObject *owner = nullptr);

/// Centres the window on its screen, no larger than the available area, and lower if more space is
/// wanted above it and the screen has room.
void centreOnScreen(QWindow &window, int roomAbove = 0);

/// Shows and raises the window and gives it the keyboard.
void bringToFront(QWindow &window);

/// Hides the window at once and deletes it from the event loop, since its own code may be running.
/// Resets the pointer.
void closeForGood(QPointer<QQuickWindow> &window);

} // namespace vellumo
