// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Pasteboard.h"

namespace vellumo {

class X11Connection;
class X11SelectionHistory;

/// The PRIMARY selection: the text that was last selected in any application.
class X11PrimarySelection : public PrimarySelection {
public:
    /// Both must outlive this object.
    X11PrimarySelection(X11Connection &connection, X11SelectionHistory &history)
        : connection_(connection)
        , history_(history)
    {
    }

    [[nodiscard]] std::optional<Publication> publication() override;
    [[nodiscard]] bool publishes(qint64 processIdentifier) override;
    [[nodiscard]] std::optional<QString> string(QDeadlineTimer deadline) override;

private:
    X11Connection &connection_;
    X11SelectionHistory &history_;
};

} // namespace vellumo
