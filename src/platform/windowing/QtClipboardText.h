// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ClipboardText.h"

namespace vellumo {

/// Reads the clipboard through Qt where that is a Wayland client: the compositor shows it to the
/// window that has the keyboard. Blocks for as long as the owner sends, at most one second without
/// a byte.
class QtClipboardText : public ClipboardText {
public:
    void read(Source source, QObject &context, std::function<void(const QString &)> done) override;
};

} // namespace vellumo
