// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/MainMenu.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>
#include <utility>

namespace vellumo {

MainMenu::MainMenu(QList<Menu> menus, QObject *parent) : QObject(parent), menus_(std::move(menus))
{
}

MainMenu::Item MainMenu::editItem(const QString &title, const QKeySequence &key,
                                  const QByteArray &command)
{
    return {title, key, [command] {
                QObject *responder = QGuiApplication::focusObject();
                return responder && responder->metaObject()->indexOfMethod(command + "()") >= 0
                    && QMetaObject::invokeMethod(responder, command.constData());
            }};
}

void MainMenu::attachTo(QWindow &window)
{
    window.installEventFilter(this);
}

bool MainMenu::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const QKeySequence pressed(static_cast<QKeyEvent *>(event)->keyCombination());
        for (const Menu &menu : std::as_const(menus_)) {
            for (const Item &item : menu.items) {
                if (!item.key.isEmpty() && item.key == pressed) {
                    return item.action();
                }
            }
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace vellumo
