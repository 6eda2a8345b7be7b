// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "ui/UnwatchedClipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace vellumo {

void UnwatchedClipboard::setField(QQuickItem *field)
{
    field_ = field;
    if (field != nullptr) {
        QObject::disconnect(QGuiApplication::clipboard(), nullptr, field, nullptr);
    }
}

} // namespace vellumo
