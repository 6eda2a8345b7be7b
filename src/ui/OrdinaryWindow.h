// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QQuickWindow>
#include <QVariantMap>
#include <functional>

class QQmlEngine;

/// Functions for the program's ordinary windows, as opposed to floating panels.
namespace vellumo {

/// The ordinary windows of an engine, for code that applies to all of them, such as the shortcuts
/// of the menus.
class OrdinaryWindows final : public QObject {
    Q_OBJECT

public:
    /// Returns the object of this engine, which owns it.
    [[nodiscard]] static OrdinaryWindows &of(QQmlEngine &engine);

    /// Gives a shown window the keyboard, also where the window manager denies it to windows that
    /// open by themselves. QWindow::requestActivate() if it is empty.
    std::function<void(QWindow &window)> onActivate;

    /// Returns the window that was brought to the front last, if it is shown; null if not. Not a
    /// dialog.
    [[nodiscard]] QWindow *front() const;

Q_SIGNALS:
    /// Emitted once for each new window, while it is hidden.
    void made(QWindow &window);
    /// Emitted after a window that is no dialog has been brought to the front.
    void broughtToFront(QWindow &window);

private:
    using QObject::QObject;
    friend void bringToFront(QWindow &window);
    friend void takeKeyboard(QWindow &window);
    static void setFront(QWindow &window);

    QPointer<QWindow> front_;
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

/// Shows and raises the window and asks for the keyboard, which the window manager may deny.
void bringToFront(QWindow &window);

/// As bringToFront(), and insists on the keyboard: for a window that the user has asked for, and
/// for a question that everything else waits for.
void takeKeyboard(QWindow &window);

/// Hides the window at once and deletes it from the event loop, since its own code may be running.
/// Resets the pointer.
void closeForGood(QPointer<QQuickWindow> &window);

} // namespace vellumo
