// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "mainwindow/PlaceCount.h"

#include "mainwindow/NotePlace.h"

#include <algorithm>

namespace vellumo {

void PlaceCount::add(const ReadingContext &context)
{
    Entry &entry = entries_[placeKey(context)];
    entry.context = &context;
    ++entry.count;
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
