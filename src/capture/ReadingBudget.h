// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDeadlineTimer>
#include <algorithm>
#include <chrono>

namespace vellumo {

/// The time that one trigger may hold the main thread while it asks other processes, shared between
/// the selection reader and the context tracker. The reader leaves the tracker a reserve.
class ReadingBudget {
public:
    static constexpr std::chrono::milliseconds total{600};
    static constexpr std::chrono::milliseconds contextReserve{60};
    static constexpr std::chrono::milliseconds contextAlone{250};
    /// After Option is released, applications need this to take their focus back from a menu bar.
    static constexpr std::chrono::milliseconds menuSettleTime{30};

    void start()
    {
        end_ = QDeadlineTimer(total);
        sameTrigger_ = QDeadlineTimer(2 * total);
        areMenusClosed = false;
    }

    /// Whether Option is released and its menus have closed, for this trigger.
    bool areMenusClosed = false;

    /// How long the trigger has been served.
    [[nodiscard]] std::chrono::milliseconds elapsed() const { return total - left(); }

    /// What is left for the selection.
    [[nodiscard]] std::chrono::milliseconds leftForSelection() const
    {
        return std::max(left() - contextReserve, std::chrono::milliseconds::zero());
    }

    [[nodiscard]] QDeadlineTimer selectionDeadline(std::chrono::milliseconds atMost) const
    {
        return QDeadlineTimer(std::min(atMost, leftForSelection()));
    }

    /// The rest of a trigger's time, which may be none; long after a trigger a time of its own.
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
    QDeadlineTimer sameTrigger_{0}; ///< what asks before this belongs to the same trigger
};

} // namespace vellumo
