// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <optional>
#include <xcb/xcb.h>

namespace vellumo::test {

/// A tray of the older kind, which embeds icons as windows. Exists as long as this object.
class EmbeddingTray {
public:
    EmbeddingTray();
    ~EmbeddingTray();
    EmbeddingTray(const EmbeddingTray &) = delete;
    EmbeddingTray &operator=(const EmbeddingTray &) = delete;
    EmbeddingTray(EmbeddingTray &&) = delete;
    EmbeddingTray &operator=(EmbeddingTray &&) = delete;

    /// Returns where the first icon that asks for a place is shown.
    [[nodiscard]] std::optional<QRect> waitForIcon();

private:
    [[nodiscard]] xcb_atom_t atom(const char *name) const;
    [[nodiscard]] bool embedIcon();

    xcb_connection_t *c_;
    xcb_window_t root_ = 0;
    xcb_window_t window_ = 0;
};

} // namespace vellumo::test
