// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QByteArray>
#include <QDateTime>
#include <functional>

namespace vellumo {

enum class ExportFormat : quint8 { Markdown, Csv, Json };

/// Returns "md", "csv" or "json".
[[nodiscard]] QString fileSuffix(ExportFormat format);

/// The parts of an exported file: head, each note, tail. All in UTF-8.
struct NotesFormat {
    QByteArray head;
    /// `before` is the previous note, null for the first.
    std::function<QByteArray(const NoteWithContext &entry, const NoteWithContext *before)> note;
    QByteArray tail;
};

/// Returns the format for `count` notes; `at` is the local time of the export, `english` the
/// language of headings. The result may be used on any one thread.
[[nodiscard]] NotesFormat notesFormat(ExportFormat format, qsizetype count, const QDateTime &at,
                                      bool english);

/// Returns where a note was read; empty if it is not known.
[[nodiscard]] QString placeName(const ReadingContext &context);

/// Returns the text without control characters and with "\n" as line break.
[[nodiscard]] QString writableText(const QString &text);

} // namespace vellumo
