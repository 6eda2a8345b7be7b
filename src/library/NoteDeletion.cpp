// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "library/NoteDeletion.h"

#include "library/NoteSelection.h"
#include "ui/BilingualText.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

NoteDeletion::NoteDeletion(NotesStoring &store, NoteSelection &selection,
                           const BilingualText &texts, QObject *parent)
    : QObject(parent)
    , store_(store)
    , selection_(selection)
    , texts_(texts)
{
    connect(&texts_, &BilingualText::languageChanged, this, &NoteDeletion::changed);
}

void NoteDeletion::deleteNote(const QString &id)
{
    remove({QUuid(id)});
}

void NoteDeletion::deleteSelected()
{
    remove(selection_.ids());
    selection_.setActive(false);
}

void NoteDeletion::remove(const QSet<QUuid> &ids)
{
    if (auto deleted = store_.remove(ids); !deleted.isEmpty()) {
        deleted_ = std::move(deleted);
        Q_EMIT changed();
    }
}

void NoteDeletion::undo()
{
    store_.restore(std::exchange(deleted_, {}));
    Q_EMIT changed();
}

void NoteDeletion::dismiss()
{
    if (canUndo()) {
        deleted_.clear();
        Q_EMIT changed();
    }
}

QString NoteDeletion::outcome() const
{
    if (!canUndo()) {
        return {};
    }
    // The server's interface has no deletion.
    const auto copies =
        std::ranges::count_if(deleted_, [](const DeletedNote &note) { return note.state.created; });
    QString deleted = texts_.pick(
        deleted_.size() == 1 ? u"Note deleted."_s : u"%L1 notes deleted."_s.arg(deleted_.size()),
        u"已删除 %L1 条笔记。"_s.arg(deleted_.size()));
    if (copies == 0) {
        return deleted;
    }
    return deleted
        + texts_.pick(copies == 1 ? u" A copy stays in your account."_s
                                  : u" Copies stay in your account."_s,
                      u"账号里的副本仍会保留。"_s);
}

} // namespace vellumo
