// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Pasteboard.h"
#include <QClipboard>

namespace vellumo {

/// Returns contents that one of our own text fields owns. They are in this process and thread:
/// requesting them through the server would wait for an answer that only this thread can give.
[[nodiscard]] std::optional<QList<PasteboardItem>> toolkitClipboardItems();
[[nodiscard]] std::optional<QString> toolkitClipboardText(QClipboard::Mode mode);

} // namespace vellumo
