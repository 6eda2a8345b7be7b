// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "NoteMaker.h"
#include "notes/StoreFile.h"
#include <QFile>

namespace vellumo::bench {

/// Writes a file with this many notes of many places, all of which the backend has.
inline void writeStore(const QString &path, int count, NoteMaker &maker)
{
    constexpr int notesPerContext = 20;
    StoreFile file;
    file.syncStates.emplace();
    for (int i = 0; i < count; ++i) {
        if (i % notesPerContext == 0)
            file.buckets.append({NoteMaker::context(i / notesPerContext), {}});
        const ReadingNote note = maker.note();
        file.syncStates->insert(noteIdText(note.id), {true, note.followUps.size()});
        file.buckets.last().notes.append(note);
    }
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(file.toJson()) < 0)
        qFatal("cannot write %s", qPrintable(path));
}

} // namespace vellumo::bench
