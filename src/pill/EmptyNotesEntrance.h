// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "pill/NotesEntranceControlling.h"

namespace vellumo {

/// An entrance that shows nothing and whose demonstration is over at once.
class EmptyNotesEntrance : public NotesEntranceControlling {
public:
    void show(int count, std::function<void()> onOpen) override;
    void setHighlighted(bool highlighted) override;
    void showNotesList(const QList<ReadingNote> &notes,
                       std::function<void(const ReadingNote &)> onSelectNote) override;
    void collapse() override;
    void playOnboardingDemo(const ReadingNote &sampleNote,
                            std::function<void()> completion) override;
};

} // namespace vellumo
