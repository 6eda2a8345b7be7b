// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>
#include <functional>

class QObject;
class QString;

namespace vellumo {

/// Reads text to be pasted without blocking the main thread, since its owner may be slow or hang.
/// Main thread only.
class ClipboardText {
public:
    enum class Source : quint8 {
        Clipboard,
        Published, ///< published by selecting; what the middle button pastes
    };

    virtual ~ClipboardText() = default;

    /// Runs `done` once, from the event loop, with the text; it is empty when there is none or the
    /// owner does not answer in time. `done` never runs when `context` is destroyed first, or when
    /// an earlier read, which takes at most two seconds, is still pending.
    virtual void read(Source source, QObject &context,
                      std::function<void(const QString &)> done) = 0;
};

} // namespace vellumo
