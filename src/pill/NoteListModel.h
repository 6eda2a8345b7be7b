// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QAbstractListModel>

namespace vellumo {

/// Notes as the list's cards show them. A card's texts are made, short and plain, when the view
/// asks for them; the notes themselves are shared, not copied.
class NoteListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void setNotes(const QList<ReadingNote> &notes);
    [[nodiscard]] const QList<ReadingNote> &notes() const { return notes_; }

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    enum Role { SourceText = Qt::UserRole, Detail, FollowUps };

private:
    QList<ReadingNote> notes_;
};

} // namespace vellumo
