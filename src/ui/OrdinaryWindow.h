// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QQuickWindow>
#include <QVariantMap>

class QQmlEngine;

/// What the program's ordinary windows have in common; its floating panels are made elsewhere.
namespace vellumo {

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
