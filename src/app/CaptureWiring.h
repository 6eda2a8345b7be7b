// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "app/UnsavedNotes.h"
#include "capture/AccessibilitySelectionReader.h"
#include "capture/ContextTracker.h"
#include "capture/ReadingBudget.h"
#include "capture/TriggerManager.h"
#include "capture/VellumoCoordinator.h"
#include "notes/OpenNote.h"
#include "panel/ResultPanelController.h"
#include "pill/NotesEntranceController.h"

namespace vellumo {

struct Foundation;

/// From a double tap to the panel and to the note: everything that reads, asks and shows.
class CaptureWiring {
public:
    /// All must outlive the wiring. `notesFolder` is where the store keeps its file.
    CaptureWiring(Foundation &with, AIExplaining &aiService, NotesStoring &notesStore,
                  const QString &notesFolder);

    [[nodiscard]] ResultPanelController &panel() { return resultPanel_; }
    [[nodiscard]] NotesEntranceController &entrance() { return notesEntrance_; }
    [[nodiscard]] ContextTracker &tracker() { return contextTracker_; }
    [[nodiscard]] TriggerManager &trigger() { return triggerManager_; }
    [[nodiscard]] VellumoCoordinator &coordinator() { return coordinator_; }

private:
    // In the order in which they are built; each may use those above it.
    ResultPanelController resultPanel_;
    UnsavedNotes unsavedNotes_;
    OpenNote openNote_;
    NotesEntranceController notesEntrance_;
    ReadingBudget readingBudget_;
    AccessibilitySelectionReader selectionReader_;
    ContextTracker contextTracker_;
    TriggerManager triggerManager_;
    VellumoCoordinator coordinator_;
};

} // namespace vellumo
