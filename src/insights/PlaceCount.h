// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QHash>

namespace vellumo {

/// Counts notes by place. The contexts must outlive the counter; it keeps pointers to them.
class PlaceCount {
public:
    struct Entry {
        const ReadingContext *context = nullptr; ///< that of the last note added
        int count = 0;
        size_t number = 0; ///< in the order of first occurrence
    };

    /// Counts a note. Returns the number of its place.
    size_t add(const ReadingContext &context);

    /// Returns at most `count` places, by descending number of notes.
    [[nodiscard]] QList<Entry> top(qsizetype count) const;
    [[nodiscard]] qsizetype size() const { return entries_.size(); }

private:
    QHash<QString, Entry> entries_;
};

} // namespace vellumo
