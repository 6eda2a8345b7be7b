// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QByteArray>
#include <QDateTime>
#include <functional>

namespace vellumo {

enum class ExportFormat : quint8 { Markdown, Csv, Json };

/// "md", "csv" or "json".
[[nodiscard]] QString fileSuffix(ExportFormat format);

/// How a format is written: what comes first, each note in turn, and what comes last, all in UTF-8.
struct NotesFormat {
    QByteArray head;
    /// Null is handed over as the note before the first.
    std::function<QByteArray(const NoteWithContext &entry, const NoteWithContext *before)> note;
    QByteArray tail;
};

/// For so many notes, at this local time; the language is that of headings. May be used on any one
/// thread.
[[nodiscard]] NotesFormat notesFormat(ExportFormat format, qsizetype count, const QDateTime &at,
                                      bool english);

/// Where a note was read; empty where that is not known any more.
[[nodiscard]] QString placeName(const ReadingContext &context);

/// Without control characters; line ends are "\n".
[[nodiscard]] QString writableText(const QString &text);

} // namespace vellumo
