// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "library/NoteSearch.h"

#include <algorithm>

namespace vellumo {

namespace {

bool occurs(const QStringMatcher &word, const NoteWithContext &entry)
{
    const auto in = [&word](const QString &text) { return word.indexIn(text) >= 0; };
    const ReadingNote &note = entry.note;
    return in(note.sourceText) || in(note.explanation) || in(note.translation)
        || in(entry.context.displayName)
        || std::any_of(note.followUps.begin(), note.followUps.end(),
                       [&in](const FollowUpExchange &exchange) {
                           return in(exchange.question) || in(exchange.answer);
                       });
}

} // namespace

NoteSearch::NoteSearch(const QString &query)
{
    const QStringList words = query.simplified().split(u' ', Qt::SkipEmptyParts);
    for (const QString &word : words) {
        words_.append(QStringMatcher(word, Qt::CaseInsensitive));
    }
}

bool NoteSearch::narrows(const NoteSearch &earlier) const
{
    return std::all_of(
        earlier.words_.begin(), earlier.words_.end(), [this](const QStringMatcher &word) {
            return std::any_of(words_.begin(), words_.end(), [&word](const QStringMatcher &longer) {
                return longer.pattern().contains(word.pattern(), Qt::CaseInsensitive);
            });
        });
}

bool NoteSearch::matches(const NoteWithContext &note) const
{
    return std::all_of(words_.begin(), words_.end(),
                       [&note](const QStringMatcher &word) { return occurs(word, note); });
}

} // namespace vellumo
