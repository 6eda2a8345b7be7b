// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QByteArray>
#include <QDate>
#include <QString>

/// A document to read, its notes below the day on which they were made; see docs/export.md.
/// Whatever a note says stays text: nothing in it is read as markup, save a bare address, which
/// some readers show as a link.
namespace vellumo::MarkdownNotes {

[[nodiscard]] QByteArray head(qsizetype count, QDate today, bool english);

/// The note that is written before it, if there is one, decides whether a day begins.
[[nodiscard]] QByteArray note(const NoteWithContext &entry, const NoteWithContext *before,
                              bool english);

/// Text as it reads: its markup escaped, its lines kept. Each line begins with `prefix`.
[[nodiscard]] QString escaped(const QString &text, const QString &prefix = {});

} // namespace vellumo::MarkdownNotes
