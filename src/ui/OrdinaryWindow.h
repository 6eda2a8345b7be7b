// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QQuickWindow>
#include <QVariantMap>

class QQmlEngine;

/// What the program's ordinary windows have in common; its floating panels are made elsewhere.
namespace vellumo {

/// Announces the ordinary windows of an engine, so that what applies to all of them, such as the
/// keys of the menus, is in one place.
class OrdinaryWindows final : public QObject {
    Q_OBJECT

public:
    /// The one of this engine, which owns it.
    [[nodiscard]] static OrdinaryWindows &of(QQmlEngine &engine);

Q_SIGNALS:
    /// Emitted once with each new window, while it is hidden.
    void made(QWindow &window);

private:
    using QObject::QObject;
};

/// Makes the hidden window that a QML file describes, such as "Update/UpdateWindow", with the
/// program's icon. Null, with a diagnostic line, when that fails. C++ owns the window; with an
/// owner it goes with that at the latest. The engine needs the import path of prepareEngine().
[[nodiscard]] QQuickWindow *makeOrdinaryWindow(QQmlEngine &engine, const QString &file,
                                               const QVariantMap &properties,
                                               QObject *owner = nullptr);

/// In the middle of its screen, no larger than what is free there; lower where more is to be free
/// above it and the screen has room.
void centreOnScreen(QWindow &window, int roomAbove = 0);

/// Shows the window above the others, with the keyboard.
void bringToFront(QWindow &window);

/// Takes the window from the screen now and deletes it when whatever runs in it has returned; the
/// pointer is null already.
void closeForGood(QPointer<QQuickWindow> &window);

} // namespace vellumo
