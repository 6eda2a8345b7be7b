// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Pasteboard.h"
#include <chrono>

namespace vellumo {

class DataControlDevice;
class WaylandConnection;

/// PRIMARY of all windows.
class DataControlPrimary : public PrimarySelection {
public:
    /// Both must outlive this object. The owner passes changes of PRIMARY to noteChange().
    DataControlPrimary(WaylandConnection &connection, const DataControlDevice &device)
        : connection_(connection)
        , device_(device)
    {
    }

    void noteChange();

    [[nodiscard]] std::optional<Publication> publication() override;
    [[nodiscard]] bool publishes(qint64 processIdentifier) override;
    [[nodiscard]] std::optional<QString> string(QDeadlineTimer deadline) override;

private:
    using Time = std::chrono::steady_clock::time_point;

    WaylandConnection &connection_;
    const DataControlDevice &device_;
    Time publishedAt_;
    std::optional<Time> readAt_;
};

} // namespace vellumo
