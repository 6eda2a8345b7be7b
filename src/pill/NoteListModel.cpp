// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "pill/NoteListModel.h"

#include "ui/PlainText.h"

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// Longer than the line of a card in the narrowest letters.
constexpr qsizetype maxShownLength = 200;

} // namespace

void NoteListModel::setNotes(const QList<ReadingNote> &notes)
{
    beginResetModel();
    notes_ = notes;
    endResetModel();
}

int NoteListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(notes_.size());
}

QVariant NoteListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= notes_.size()) {
        return {};
    }
    const ReadingNote &note = notes_[index.row()];
    switch (role) {
    case SourceText:
        return presentableLine(note.sourceText, maxShownLength);
    case Detail:
        return presentableLine(note.explanation.isEmpty() ? note.translation : note.explanation,
                               maxShownLength);
    case Asked:
        return note.followUps.isEmpty() ? QString() : u"↩ %1"_s.arg(note.followUps.size());
    default:
        return {};
    }
}

QHash<int, QByteArray> NoteListModel::roleNames() const
{
    return {{SourceText, "sourceText"}, {Detail, "detail"}, {Asked, "asked"}};
}

} // namespace vellumo
