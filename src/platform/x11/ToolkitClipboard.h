// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Pasteboard.h"
#include <QClipboard>

namespace vellumo {

/// Contents that one of our own text fields put there. They live in this process and thread: asking
/// for them through the server would wait for an answer that only we can give.
[[nodiscard]] std::optional<QList<PasteboardItem>> toolkitClipboardItems();
[[nodiscard]] std::optional<QString> toolkitClipboardText(QClipboard::Mode mode);

} // namespace vellumo
