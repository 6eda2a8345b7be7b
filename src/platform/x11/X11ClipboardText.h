// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ClipboardText.h"
#include <QByteArray>
#include <QThread>
#include <memory>

namespace vellumo {

/// Reads on a thread with an X connection of its own, so that the main thread stays free: it may
/// itself be the owner that has to answer.
class X11ClipboardText : public ClipboardText {
public:
    /// An empty display means the one that the environment names.
    explicit X11ClipboardText(QByteArray display = {}) : display_(std::move(display)) { }
    /// Blocks until a pending read ends, two seconds at most.
    ~X11ClipboardText() override;
    Q_DISABLE_COPY_MOVE(X11ClipboardText)

    void read(Source source, QObject &context, std::function<void(const QString &)> done) override;

private:
    QByteArray display_;
    std::unique_ptr<QThread> thread_; ///< of the last read
};

} // namespace vellumo
