// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "library/NoteSelection.h"

#include "library/NoteRowsModel.h"

#include <algorithm>

namespace vellumo {

NoteSelection::NoteSelection(NoteRowsModel &rows, QObject *parent) : QObject(parent), rows_(rows)
{
    rows_.setSelected([this](const QUuid &id) { return contains(id); });
    // the anchor is a row, which is another note after a reset
    connect(&rows_, &NoteRowsModel::modelReset, this, [this] { anchor_ = -1; });
}

void NoteSelection::setActive(bool active)
{
    if (active == isActive_) {
        return;
    }
    isActive_ = active;
    selected_.clear();
    before_.clear();
    anchor_ = -1;
    publish();
}

void NoteSelection::toggle(int row)
{
    const NoteWithContext *entry = rows_.noteAt(row);
    if (entry == nullptr) {
        return;
    }
    isActive_ = true;
    if (!selected_.remove(entry->note.id)) {
        selected_.insert(entry->note.id);
    }
    anchor_ = row;
    before_ = selected_;
    publish();
}

void NoteSelection::extendTo(int row)
{
    if (rows_.noteAt(row) == nullptr) {
        return;
    }
    isActive_ = true;
    if (anchor_ < 0) {
        anchor_ = row;
        before_ = selected_;
    }
    selected_ = before_;
    const auto [first, last] = std::minmax(anchor_, row);
    for (int i = first; i <= last; ++i) {
        if (const NoteWithContext *entry = rows_.noteAt(i)) {
            selected_.insert(entry->note.id);
        }
    }
    publish();
}

void NoteSelection::selectOnly(const QUuid &id)
{
    isActive_ = true;
    anchor_ = -1;
    selected_ = {id};
    before_ = selected_;
    publish();
}

void NoteSelection::selectAll()
{
    isActive_ = true;
    anchor_ = -1;
    for (int row = 0; row < rows_.rowCount(); ++row) {
        if (const NoteWithContext *entry = rows_.noteAt(row)) {
            selected_.insert(entry->note.id);
        }
    }
    publish();
}

void NoteSelection::publish()
{
    rows_.refreshSelection();
    Q_EMIT changed();
}

} // namespace vellumo
