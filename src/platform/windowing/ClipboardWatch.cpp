// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/windowing/ClipboardWatch.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QObject>

namespace vellumo {

void stopWatchingClipboard(QObject &root)
{
    const QClipboard *clipboard = QGuiApplication::clipboard();
    const QList<QObject *> objects = root.findChildren<QObject *>();
    for (QObject *object : objects) {
        if (object->inherits("QQuickTextInput") || object->inherits("QQuickTextEdit")) {
            QObject::disconnect(clipboard, nullptr, object, nullptr);
        }
    }
}

} // namespace vellumo
