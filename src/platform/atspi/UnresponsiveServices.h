// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>
#include <QHash>
#include <QString>
#include <chrono>

namespace vellumo {

/// Remembers for a short time which applications did not answer, so that several questions in a row
/// to a hung one cost one timeout.
class UnresponsiveServices {
public:
    static constexpr std::chrono::milliseconds memory{1000};

    /// A timeout shorter than this does not mark the application as unresponsive.
    static constexpr std::chrono::milliseconds minTimeout{80};

    void noteTimeout(const QString &service, std::chrono::milliseconds waited);
    [[nodiscard]] bool contains(const QString &service) const;
    void clear() { until_.clear(); }

private:
    QHash<QString, QDeadlineTimer> until_;
};

} // namespace vellumo
