// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QHash>

namespace vellumo {

/// Counts notes by place. Every context that is counted must stay where it is.
class PlaceCount {
public:
    struct Entry {
        const ReadingContext *context = nullptr; ///< of its oldest note, if the newest come first
        int count = 0;
        size_t number = 0; ///< in the order in which the places came
    };

    /// Answers the place's number.
    size_t add(const ReadingContext &context);

    /// Most notes first.
    [[nodiscard]] QList<Entry> top(qsizetype count) const;
    [[nodiscard]] qsizetype size() const { return entries_.size(); }

private:
    QHash<QString, Entry> entries_;
};

} // namespace vellumo
