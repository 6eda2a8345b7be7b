// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "driver/Application.h"
#include "driver/Waiting.h"
#include <QTest>

namespace vellumo::test {

/// The other X client. Runs as long as this object exists.
class PeerProcess {
public:
    /// Returns when it is ready.
    explicit PeerProcess(const QStringList &arguments)
        : process_({QStringLiteral("peer"), QStringLiteral(VELLUMO_X11_PEER), arguments, {}, {}})
    {
        process_.launch();
        isReady_ = waitUntil([this] { return lines().size() > 1; });
    }

    [[nodiscard]] bool isReady() const { return isReady_; }
    [[nodiscard]] quint32 window() { return lines().constFirst().toUInt(); }
    [[nodiscard]] qint64 processId() const { return process_.processIdentifier(); }
    /// The lines after the first.
    [[nodiscard]] QStringList moreLines() { return lines().mid(1, lines().size() - 2); }

private:
    [[nodiscard]] QStringList lines() { return process_.standardOutput().split(u'\n'); }

    Application process_;
    bool isReady_ = false;
};

} // namespace vellumo::test
