// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/ToolkitClipboard.h"

#include <QGuiApplication>
#include <QMimeData>

using namespace Qt::StringLiterals;

namespace vellumo {

std::optional<QList<PasteboardItem>> toolkitClipboardItems()
{
    const auto *clipboard = QGuiApplication::clipboard();
    if (!clipboard->ownsClipboard()) {
        return std::nullopt; // lost between two calls
    }
    const auto *data = clipboard->mimeData();
    PasteboardItem item;
    if (data->hasText()) { // the target names that other programs request
        const QByteArray text = data->text().toUtf8();
        for (const auto &name : {u"UTF8_STRING"_s, u"text/plain;charset=utf-8"_s}) {
            item.append({name, text});
        }
    }
    const auto formats = data->formats();
    for (const auto &format : formats) {
        item.append({format, data->data(format)});
    }
    return QList<PasteboardItem>{item};
}

std::optional<QString> toolkitClipboardText(QClipboard::Mode mode)
{
    const auto *clipboard = QGuiApplication::clipboard();
    const bool owns =
        mode == QClipboard::Selection ? clipboard->ownsSelection() : clipboard->ownsClipboard();
    return owns ? std::optional(clipboard->text(mode)) : std::nullopt;
}

} // namespace vellumo
