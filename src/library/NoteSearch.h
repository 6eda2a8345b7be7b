// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QStringMatcher>

namespace vellumo {

/// What is typed into the search field: every word of it must occur somewhere in a note, in
/// whatever case.
class NoteSearch {
public:
    NoteSearch() = default;
    explicit NoteSearch(const QString &query);

    /// Whether there is nothing to look for, so that every note fits.
    [[nodiscard]] bool isEmpty() const { return words_.isEmpty(); }

    /// Whether only notes that fit `earlier` can fit this.
    [[nodiscard]] bool narrows(const NoteSearch &earlier) const;

    [[nodiscard]] bool fits(const NoteWithContext &note) const;

private:
    QList<QStringMatcher> words_;
};

} // namespace vellumo
