// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QByteArray>

/// A table for spreadsheets and flash-card programs, see docs/export.md. Every cell is quoted; one
/// that a spreadsheet would take for a formula begins with an apostrophe.
namespace vellumo::CsvNotes {

[[nodiscard]] QByteArray head();
[[nodiscard]] QByteArray row(const NoteWithContext &entry);

/// One cell with its quotes.
[[nodiscard]] QString cell(const QString &text);

} // namespace vellumo::CsvNotes
