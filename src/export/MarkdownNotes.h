// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QByteArray>
#include <QDate>
#include <QString>

/// A document with the notes below headings for their days; see docs/export.md. Markup in a note's
/// texts is escaped, except for plain addresses, which some readers show as links.
namespace vellumo::MarkdownNotes {

[[nodiscard]] QByteArray head(qsizetype count, QDate today, bool english);

/// Returns one note, after a heading for its day if the previous note is of another day or null.
[[nodiscard]] QByteArray note(const NoteWithContext &entry, const NoteWithContext *before,
                              bool english);

/// Returns the text with markup escaped and line breaks kept. Each line begins with `prefix`.
[[nodiscard]] QString escaped(const QString &text, const QString &prefix = {});

} // namespace vellumo::MarkdownNotes
