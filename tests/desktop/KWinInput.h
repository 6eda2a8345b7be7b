// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

struct wl_display;
struct wl_proxy;

namespace vellumo::test {

/// A keyboard for the windows of KWin, native ones included, through the protocol
/// org_kde_kwin_fake_input. Key codes are those of linux/input-event-codes.h. Each call returns
/// when KWin has taken the keys.
class KWinInput {
public:
    KWinInput();
    ~KWinInput();
    Q_DISABLE_COPY_MOVE(KWinInput)

    /// Returns false if KWin does not offer the protocol to this program.
    [[nodiscard]] bool isAvailable() const { return input_ != nullptr; }

    void press(quint32 key) const { send(key, 1); }
    void release(quint32 key) const { send(key, 0); }
    void chord(quint32 modifier, quint32 key) const;
    /// Taps Alt twice, as fast as a person does.
    void doubleTap() const;

private:
    void send(quint32 key, quint32 state) const;

    wl_display *display_;
    wl_proxy *input_ = nullptr;
};

} // namespace vellumo::test
