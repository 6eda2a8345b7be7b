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
        const ReadingContext *context = nullptr;
        int count = 0;
    };

    void add(const ReadingContext &context);

    /// Most notes first.
    [[nodiscard]] QList<Entry> top(qsizetype count) const;
    [[nodiscard]] qsizetype size() const { return entries_.size(); }

private:
    QHash<QString, Entry> entries_;
};

} // namespace vellumo
