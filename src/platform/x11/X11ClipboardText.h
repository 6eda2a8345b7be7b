// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ClipboardText.h"
#include <QByteArray>
#include <QThread>
#include <memory>

namespace vellumo {

/// Each reading has a thread with an X connection of its own, so that none waits for another and
/// the main thread can be the owner that answers.
class X11ClipboardText : public ClipboardText {
public:
    /// An empty display means the one that the environment names.
    explicit X11ClipboardText(QByteArray display = {}) : display_(std::move(display)) { }
    /// Waits for a reading to end.
    ~X11ClipboardText() override;
    Q_DISABLE_COPY_MOVE(X11ClipboardText)

    void read(Source source, QObject &context, std::function<void(const QString &)> done) override;

private:
    QByteArray display_;
    std::unique_ptr<QThread> thread_; ///< of the last reading
};

} // namespace vellumo
