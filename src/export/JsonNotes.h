// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QByteArray>
#include <QDateTime>

/// One JSON object with all data of the notes, see docs/export.md.
namespace vellumo::JsonNotes {

[[nodiscard]] QByteArray head(const QDateTime &at);
[[nodiscard]] QByteArray note(const NoteWithContext &entry, bool isFirst);
[[nodiscard]] QByteArray tail();

} // namespace vellumo::JsonNotes
