// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ClipboardText.h"
#include "platform/wayland/client/WaylandClientModule.h"
#include <QByteArray>
#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>
#include <optional>

namespace vellumo {

/// Reads text to be pasted as the compositor shows it to clipboard managers, where it does:
/// XWayland has it only while an X11 window has the keyboard. Elsewhere reads it from XWayland.
class WaylandClipboardText : public ClipboardText {
public:
    /// Both must outlive this object; `client` may be null.
    WaylandClipboardText(ClipboardText &x11, waylandClientModule::Client *client);
    ~WaylandClipboardText() override;
    Q_DISABLE_COPY_MOVE(WaylandClipboardText)

    void read(Source source, QObject &context, std::function<void(const QString &)> done) override;

private:
    /// A text that is being written by its owner.
    struct Reading {
        waylandClientModule::RequestedText text;
        QPointer<QObject> context;
        std::function<void(const QString &)> done;
        QByteArray bytes;
        QSocketNotifier *notifier = nullptr; ///< owned
    };

    void readMore();
    void finish(bool isWhole);
    [[nodiscard]] Reading end();

    ClipboardText &x11_;
    waylandClientModule::Client *client_;
    std::optional<Reading> reading_; ///< absent when no read is pending
    QTimer deadline_;
};

} // namespace vellumo
