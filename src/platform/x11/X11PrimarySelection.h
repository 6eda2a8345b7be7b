// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Pasteboard.h"

namespace vellumo {

class X11Connection;

/// The PRIMARY selection: what was last selected, in whichever application that was.
class X11PrimarySelection : public PrimarySelection {
public:
    /// `connection` must outlive this object.
    explicit X11PrimarySelection(X11Connection &connection) : connection_(connection) { }

    [[nodiscard]] std::optional<qint64> ownerProcess() override;
    [[nodiscard]] std::optional<QString> string(QDeadlineTimer deadline) override;

private:
    X11Connection &connection_;
};

} // namespace vellumo
