// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QByteArray>

/// A table for spreadsheets and flash-card programs, see docs/export.md. Every cell is quoted; an
/// apostrophe is inserted where a spreadsheet would evaluate a formula: at the beginning of a cell,
/// and within a text wherever another separator or a line break would begin one.
namespace vellumo::CsvNotes {

[[nodiscard]] QByteArray head();
[[nodiscard]] QByteArray row(const NoteWithContext &entry);

/// Returns one cell with its quotes.
[[nodiscard]] QString cell(const QString &text);

} // namespace vellumo::CsvNotes
