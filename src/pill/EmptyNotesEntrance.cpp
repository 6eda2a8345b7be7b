// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "pill/EmptyNotesEntrance.h"

namespace vellumo {

void EmptyNotesEntrance::show(int count, std::function<void()> onOpen)
{
    Q_UNUSED(count)
    Q_UNUSED(onOpen)
}

void EmptyNotesEntrance::setHighlighted(bool highlighted)
{
    Q_UNUSED(highlighted)
}

void EmptyNotesEntrance::showNotesList(const QList<ReadingNote> &notes,
                                       std::function<void(const ReadingNote &)> onSelectNote)
{
    Q_UNUSED(notes)
    Q_UNUSED(onSelectNote)
}

void EmptyNotesEntrance::collapse() { }

void EmptyNotesEntrance::playOnboardingDemo(const ReadingNote &sampleNote,
                                            std::function<void()> completion)
{
    Q_UNUSED(sampleNote)
    if (completion) {
        completion();
    }
}

} // namespace vellumo
