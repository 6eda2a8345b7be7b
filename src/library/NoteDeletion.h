// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/NotesStoring.h"
#include <QtQml/qqmlregistration.h>

namespace vellumo {

class BilingualText;
class NoteSelection;

/// Deletes notes for the main window. Those of the last deletion can be brought back until it is
/// dismissed.
class NoteDeletion : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY changed)
    Q_PROPERTY(QString outcome READ outcome NOTIFY changed)

public:
    /// All must outlive this object.
    NoteDeletion(NotesStoring &store, NoteSelection &selection, const BilingualText &texts,
                 QObject *parent = nullptr);

    /// Deletes the note with this id, in any text form; does nothing when it is not stored.
    Q_INVOKABLE void deleteNote(const QString &id);
    /// Deletes the selected notes and ends selection mode. Does nothing when none is selected.
    Q_INVOKABLE void deleteSelected();

    Q_INVOKABLE void undo();
    /// Forgets the last deletion.
    Q_INVOKABLE void dismiss();

    [[nodiscard]] bool canUndo() const { return !deleted_.isEmpty(); }
    /// Returns what was deleted last; empty when it cannot be undone.
    [[nodiscard]] QString outcome() const;

Q_SIGNALS:
    void changed();

private:
    void remove(const QSet<QUuid> &ids);

    NotesStoring &store_;
    NoteSelection &selection_;
    const BilingualText &texts_;
    QList<DeletedNote> deleted_;
};

} // namespace vellumo
