// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/OpenNote.h"

#include "files/AtomicFile.h"
#include "files/PrivateDirectory.h"
#include "notes/NotesFile.h"
#include "notes/NotesStoring.h"
#include "notes/StoreFile.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

void write(const QString &path, const NoteWithContext &pair)
{
    if (makePrivateDirectory(QFileInfo(path).absolutePath())) {
        return;
    }
    AtomicFile file(path, {.temporary = AtomicFile::Temporary::Fixed});
    file.write(StoreFile{{{pair.context, {pair.note}}}, NoteSyncStates()}.toJson());
    file.commit();
}

} // namespace

OpenNote::OpenNote(const QString &folder) : path_(folder + u"/open-note.json"_s)
{
    writer_.setMaxThreadCount(1);
    writer_.setExpiryTimeout(0);
}

OpenNote::~OpenNote()
{
    writer_.waitForDone();
}

void OpenNote::recover(NotesStoring &store)
{
    const auto file = NotesFile(path_).read();
    if (!file) {
        return;
    }
    for (const StoredNotesBucket &bucket : file->buckets) {
        for (const ReadingNote &note : bucket.notes) {
            const auto stored = store.find(note.id);
            if (!stored && !store.isDeleted(note.id)) {
                store.add(note, bucket.context);
            } else if (stored && stored->note.followUps.size() < note.followUps.size()) {
                store.update(note, stored->context);
            }
        }
    }
    if (!store.saveFailure()) {
        QFile::remove(path_);
    }
}

void OpenNote::keep(const NoteWithContext &note)
{
    kept_ = note.note.id;
    writer_.start([path = path_, note] { write(path, note); });
}

void OpenNote::drop(const QUuid &id)
{
    if (kept_ == id && !id.isNull()) {
        kept_ = QUuid();
        writer_.start([path = path_] { QFile::remove(path); });
    }
}

} // namespace vellumo
