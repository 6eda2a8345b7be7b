// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <optional>

namespace vellumo {

/// A message of sway's IPC, which has the framing of i3's: https://i3wm.org/docs/ipc.html
struct SwayMessage {
    enum Type : quint32 {
        RunCommand = 0,
        Subscribe = 2,
        GetTree = 4,
        SendTick = 10,
        WorkspaceEvent = 0x80000000,
        ModeEvent = 0x80000002,
        WindowEvent = 0x80000003,
        BindingEvent = 0x80000005,
        TickEvent = 0x80000007,
    };

    quint32 type = 0; ///< one of Type, or another that is not used here
    QByteArray payload;

    [[nodiscard]] bool isEvent() const { return (type & 0x80000000U) != 0; }

    /// Returns the message with its header.
    [[nodiscard]] QByteArray framed() const;
};

/// Splits the bytes of a connection into messages.
class SwayMessageReader {
public:
    void append(const QByteArray &bytes);

    /// Returns the next whole message; absent until all of its bytes have arrived.
    [[nodiscard]] std::optional<SwayMessage> next();

    /// Returns whether the bytes are no messages. No message follows.
    [[nodiscard]] bool isBroken() const { return isBroken_; }

private:
    QByteArray bytes_;
    bool isBroken_ = false;
};

} // namespace vellumo
