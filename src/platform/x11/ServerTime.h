// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>
#include <optional>

namespace vellumo {

/// Widens the server's time, milliseconds in 32 bits that wrap around every 49 days, to 64 bits.
class ServerTime {
public:
    /// Returns the widened `time`, which must be within 24 days of the previous one. It may be
    /// earlier, since events of several sources interleave.
    qint64 widen(quint32 time)
    {
        if (!last_) {
            last_ = time;
        }
        *last_ += static_cast<qint32>(time - static_cast<quint32>(*last_));
        return *last_;
    }

    /// Returns the last widened time, 0 before the first.
    [[nodiscard]] qint64 last() const { return last_.value_or(0); }

private:
    std::optional<qint64> last_;
};

} // namespace vellumo
