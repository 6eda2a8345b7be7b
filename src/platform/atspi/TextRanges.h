// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/atspi/AtspiProtocol.h"
#include "platform/atspi/AtspiQuestion.h"
#include <QList>
#include <optional>

namespace vellumo {

/// A half-open range of a text, in the application's offsets (code points).
struct OffsetRange {
    int start = 0;
    int end = 0;
    friend bool operator==(const OffsetRange &, const OffsetRange &) = default;
};

struct SelectedRanges {
    QList<OffsetRange> ranges; ///< none of them empty
    bool hasEmpty = false; ///< an empty range was removed
    bool isComplete = true; ///< false if more is selected at an unknown position
    friend bool operator==(const SelectedRanges &, const SelectedRanges &) = default;
};

/// A pending query of the selected ranges of one object's text, which takes one round trip when
/// there is at most one range.
class PendingRanges {
public:
    PendingRanges(const ObjectReference &object, AtspiQuestion &question);

    /// Blocks until the replies and returns the ranges; absent if the object has no text or did not
    /// answer.
    [[nodiscard]] std::optional<SelectedRanges> take();

private:
    ObjectReference object_;
    AtspiQuestion &question_;
    PendingAnswer count_;
    PendingAnswer first_;
};

/// Sends the request for a range of the object's text; an end of -1 means the end of the text.
[[nodiscard]] PendingAnswer sendGetText(const ObjectReference &object, OffsetRange range,
                                        AtspiQuestion &question);

} // namespace vellumo
