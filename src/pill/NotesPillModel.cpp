// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "pill/NotesPillModel.h"

#include "pill/PillGeometry.h"
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

void NotesPillModel::setCount(int count)
{
    if (std::exchange(count_, count) != count) {
        Q_EMIT countChanged();
    }
}

QString NotesPillModel::label() const
{
    return count_ < 1 ? u"Notes"_s : u"Notes %1"_s.arg(count_);
}

void NotesPillModel::setNotes(const QList<ReadingNote> &notes)
{
    rows_.setNotes(notes);
    Q_EMIT notesChanged();
}

void NotesPillModel::expandInto(Face face)
{
    if (!expanded_) {
        expanded_ = true;
        face_ = face;
        Q_EMIT expandedChanged();
    }
}

void NotesPillModel::fold()
{
    if (std::exchange(expanded_, false)) {
        Q_EMIT expandedChanged();
    }
}

void NotesPillModel::setHighlighted(bool highlighted)
{
    if (std::exchange(highlighted_, highlighted) != highlighted) {
        Q_EMIT highlightedChanged();
    }
}

void NotesPillModel::setPillHovered(bool hovered)
{
    if (std::exchange(pillHovered_, hovered) != hovered) {
        Q_EMIT pillHoveredChanged();
    }
}

QString NotesPillModel::listTitle() const
{
    return u"Notes %1"_s.arg(noteCount());
}

void NotesPillModel::setTextScale(qreal scale)
{
    if (std::exchange(textScale_, scale) != scale) {
        Q_EMIT notesChanged();
    }
}

qreal NotesPillModel::listHeight() const
{
    return pillGeometry::listHeight(noteCount(), textScale_);
}

void NotesPillModel::select(int row)
{
    if (onSelect && row >= 0 && row < notes().size()) {
        const ReadingNote note = notes().at(row); // a copy: the callback may replace the notes
        onSelect(note);
    }
}

} // namespace vellumo
