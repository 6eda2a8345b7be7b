// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QThreadPool>

namespace vellumo {

class NotesStoring;

/// The note of the panel that is on screen, in a file of its own until the store has it. A program
/// that is killed, or whose window system ends, leaves it to the next start. The file is written on
/// a thread of its own, in the order of the calls; a failure is ignored, since the note is saved
/// when the panel closes. Main thread only.
class OpenNote {
public:
    /// `folder` is where the notes are kept; it need not exist.
    explicit OpenNote(const QString &folder);
    /// Waits for the last write.
    ~OpenNote();
    Q_DISABLE_COPY_MOVE(OpenNote)

    /// Adds to the store what an earlier run has left, and removes the file once it is saved.
    void recover(NotesStoring &store);

    /// Replaces what is kept.
    void keep(const NoteWithContext &note);
    /// Removes the file if this note is kept.
    void drop(const QUuid &id);

private:
    QString path_;
    QUuid kept_;
    QThreadPool writer_; ///< one thread, which ends when nothing is left to write
};

} // namespace vellumo
