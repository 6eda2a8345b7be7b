// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/windowing/QtClipboardText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <utility>

namespace vellumo {

void QtClipboardText::read(Source source, QObject &context,
                           std::function<void(const QString &)> done)
{
    const auto mode = source == Source::Clipboard ? QClipboard::Clipboard : QClipboard::Selection;
    QMetaObject::invokeMethod(
        &context,
        [mode, done = std::move(done)] { done(QGuiApplication::clipboard()->text(mode)); },
        Qt::QueuedConnection);
}

} // namespace vellumo
