// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>
#include <algorithm>
#include <chrono>

namespace vellumo {

/// The time for which one trigger may block the main thread with queries of other processes, shared
/// by the selection reader and the context tracker. The reader leaves a reserve for the tracker.
class ReadingBudget {
public:
    static constexpr std::chrono::milliseconds total{600};
    static constexpr std::chrono::milliseconds contextReserve{60};
    static constexpr std::chrono::milliseconds contextAlone{250};
    /// Time that applications need to take the focus back from a menu bar after Option is released.
    static constexpr std::chrono::milliseconds menuSettleTime{30};

    void start()
    {
        end_ = QDeadlineTimer(total);
        sameTrigger_ = QDeadlineTimer(2 * total);
        areMenusClosed = false;
    }

    /// Whether Option is released and its menus have closed, for this trigger.
    bool areMenusClosed = false;

    /// Returns the time since the trigger.
    [[nodiscard]] std::chrono::milliseconds elapsed() const { return total - left(); }

    /// Returns the remaining time for the selection.
    [[nodiscard]] std::chrono::milliseconds leftForSelection() const
    {
        return std::max(left() - contextReserve, std::chrono::milliseconds::zero());
    }

    [[nodiscard]] QDeadlineTimer selectionDeadline(std::chrono::milliseconds atMost) const
    {
        return QDeadlineTimer(std::min(atMost, leftForSelection()));
    }

    /// Returns the deadline of the remaining time, which may have expired; long after a trigger, a
    /// separate time.
    [[nodiscard]] QDeadlineTimer contextDeadline() const
    {
        return QDeadlineTimer(sameTrigger_.hasExpired() ? contextAlone
                                                        : std::min(left(), contextAlone));
    }

private:
    [[nodiscard]] std::chrono::milliseconds left() const
    {
        return std::chrono::milliseconds(std::max<qint64>(end_.remainingTime(), 0));
    }

    QDeadlineTimer end_{0};
    QDeadlineTimer sameTrigger_{0}; ///< calls before this belong to the same trigger
};

} // namespace vellumo
