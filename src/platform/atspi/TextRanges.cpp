// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/TextRanges.h"

#include <algorithm>
#include <vector>

namespace vellumo {
namespace {

PendingAnswer sendGetSelection(const ObjectReference &object, int index, AtspiQuestion &question)
{
    return question.send(object, Atspi::text, "GetSelection", {index});
}

void addRange(SelectedRanges &selected, const QVariantList &reply)
{
    const int start = reply.size() < 2 ? -1 : reply.at(0).toInt();
    const int end = reply.size() < 2 ? -1 : reply.at(1).toInt();
    if (start < 0 || end < 0) {
        selected.isComplete = false; // such as a page that is scrolled out of view
    } else if (start == end) {
        selected.hasEmpty = true;
    } else {
        selected.ranges.append({std::min(start, end), std::max(start, end)});
    }
}

} // namespace

PendingRanges::PendingRanges(const ObjectReference &object, AtspiQuestion &question)
    : object_(object)
    , question_(question)
    , count_(question.send(object, Atspi::text, "GetNSelections"))
    , first_(sendGetSelection(object, 0, question))
{
}

std::optional<SelectedRanges> PendingRanges::take()
{
    // Far more than a user selects; a broken application may report any number.
    constexpr int maxRanges = 64;
    const auto count = count_.value<int>();
    const QVariantList first = first_.wait();
    if (!count) {
        return std::nullopt;
    }
    SelectedRanges selected;
    if (*count > 0) {
        addRange(selected, first);
    }
    std::vector<PendingAnswer> others;
    for (int i = 1; i < std::min(*count, maxRanges); ++i) {
        others.push_back(sendGetSelection(object_, i, question_));
    }
    for (PendingAnswer &other : others) {
        addRange(selected, other.wait());
    }
    return selected;
}

PendingAnswer sendGetText(const ObjectReference &object, OffsetRange range, AtspiQuestion &question)
{
    return question.send(object, Atspi::text, "GetText", {range.start, range.end});
}

} // namespace vellumo
