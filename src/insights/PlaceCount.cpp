// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "insights/PlaceCount.h"

#include "library/NotePlace.h"

#include <algorithm>

namespace vellumo {

size_t PlaceCount::add(const ReadingContext &context)
{
    const auto next = static_cast<size_t>(entries_.size());
    Entry &entry = entries_[placeKey(context)];
    if (entry.count++ == 0) {
        entry.number = next;
    }
    entry.context = &context;
    return entry.number;
}

QList<PlaceCount::Entry> PlaceCount::top(qsizetype count) const
{
    QList<Entry> sorted = entries_.values();
    const qsizetype kept = std::min(count, sorted.size());
    std::partial_sort(
        sorted.begin(), sorted.begin() + kept, sorted.end(), [](const Entry &a, const Entry &b) {
            return a.count != b.count ? a.count > b.count
                                      : a.context->displayName < b.context->displayName;
        });
    return sorted.first(kept);
}

} // namespace vellumo
