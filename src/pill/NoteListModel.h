// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QAbstractListModel>

namespace vellumo {

/// The notes in the pill's list. A card's short plain texts are created when the view requests
/// them; the notes themselves are shared, not copied.
class NoteListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void setNotes(const QList<ReadingNote> &notes);
    [[nodiscard]] const QList<ReadingNote> &notes() const { return notes_; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    enum Role {
        SourceText = Qt::UserRole,
        Detail,
        Asked, ///< a sign with the number of follow-ups; empty without any
    };

private:
    QList<ReadingNote> notes_;
};

} // namespace vellumo
