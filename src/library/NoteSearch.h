// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QStringMatcher>

namespace vellumo {

/// A parsed search query. A note matches if each word occurs somewhere in it, ignoring case.
class NoteSearch {
public:
    NoteSearch() = default;
    explicit NoteSearch(const QString &query);

    /// Returns whether the query has no words, so that every note matches.
    [[nodiscard]] bool isEmpty() const { return words_.isEmpty(); }

    /// Returns whether each note that matches this query also matches `earlier`.
    [[nodiscard]] bool narrows(const NoteSearch &earlier) const;

    [[nodiscard]] bool matches(const NoteWithContext &note) const;

private:
    QList<QStringMatcher> words_;
};

} // namespace vellumo
