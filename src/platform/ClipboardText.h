// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>
#include <functional>

class QObject;
class QString;

namespace vellumo {

/// Text that can be pasted, read without holding the main thread: the program that owns it may be
/// slow or hang. Main thread only.
class ClipboardText {
public:
    enum class Source : quint8 {
        Clipboard,
        Published, ///< by selecting; what the middle button pastes
    };

    virtual ~ClipboardText() = default;

    /// Runs `done` once, from the event loop, with the text, or with an empty one when there is
    /// none or it does not come in time. It does not run when `context` goes before, nor while an
    /// earlier reading has not ended, which takes two seconds at most.
    virtual void read(Source source, QObject &context,
                      std::function<void(const QString &)> done) = 0;
};

} // namespace vellumo
