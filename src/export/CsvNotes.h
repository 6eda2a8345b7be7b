// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QByteArray>

/// A table for spreadsheets and flash-card programs, see docs/export.md. Every cell is quoted;
/// where a spreadsheet would take something for a formula, an apostrophe comes before it: at a
/// cell's beginning, and within a text wherever another separator or a line end would begin a cell.
namespace vellumo::CsvNotes {

[[nodiscard]] QByteArray head();
[[nodiscard]] QByteArray row(const NoteWithContext &entry);

/// One cell with its quotes.
[[nodiscard]] QString cell(const QString &text);

} // namespace vellumo::CsvNotes
