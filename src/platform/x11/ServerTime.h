// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>
#include <optional>

namespace vellumo {

/// Makes the server's time, milliseconds in 32 bits that start over every 49 days, grow for ever.
class ServerTime {
public:
    /// The wide form of `time`, which must lie within 24 days of the one before; it may lie in the
    /// past of it, since events of several sources interleave.
    qint64 widen(quint32 time)
    {
        if (!last_) {
            last_ = time;
        }
        *last_ += static_cast<qint32>(time - static_cast<quint32>(*last_));
        return *last_;
    }

    /// The last widened time, 0 before the first.
    [[nodiscard]] qint64 last() const { return last_.value_or(0); }

private:
    std::optional<qint64> last_;
};

} // namespace vellumo
