// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <functional>

namespace vellumo {

/// The floating notes pill and its list, for the coordinator. Main thread only.
class NotesEntranceControlling {
public:
    virtual ~NotesEntranceControlling() = default;

    /// Shows the pill with this count, or updates the count. `onOpen` replaces the earlier callback
    /// and runs when the pill is clicked.
    virtual void show(int count, std::function<void()> onOpen) = 0;

    /// Draws the pill in its attention state.
    virtual void setHighlighted(bool highlighted) = 0;

    /// Opens the list with these notes in this order. `onSelectNote` runs when a row is chosen,
    /// after the list was folded.
    virtual void showNotesList(const QList<ReadingNote> &notes,
                               std::function<void(const ReadingNote &)> onSelectNote) = 0;

    /// Folds the list back into the pill.
    virtual void collapse() = 0;

    /// Plays the scripted demonstration with a note that is not stored. `completion` runs once at
    /// its end.
    virtual void playOnboardingDemo(const ReadingNote &sampleNote,
                                    std::function<void()> completion) = 0;

    /// Ends a running demonstration at once; does nothing without one.
    virtual void endOnboardingDemo() = 0;
};

} // namespace vellumo
