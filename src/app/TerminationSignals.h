// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <array>

namespace vellumo {

/// Turns the first SIGINT or SIGTERM into an ordinary end of the event loop.
class TerminationSignals : public QObject {
    Q_OBJECT

public:
    /// One per process.
    explicit TerminationSignals(QObject *parent = nullptr);
    ~TerminationSignals() override;
    Q_DISABLE_COPY_MOVE(TerminationSignals)

Q_SIGNALS:
    void received();

private:
    std::array<int, 2> pipe_{-1, -1};
};

} // namespace vellumo
