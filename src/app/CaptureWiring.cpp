// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/CaptureWiring.h"

#include "app/Foundation.h"

namespace vellumo {

CaptureWiring::CaptureWiring(Foundation &with, AIExplaining &aiService, NotesStoring &notesStore,
                             const QString &notesFolder)
    : resultPanel_(with.windows, with.screens, with.platform.events(), with.texts)
    , unsavedNotes_({.store = notesStore, .panel = resultPanel_, .texts = with.texts}, notesFolder)
    , notesEntrance_({.windows = with.windows,
                      .screens = with.screens,
                      .monitors = with.platform.events(),
                      .defaults = with.defaults,
                      .clock = with.clock,
                      .texts = with.texts})
    , selectionReader_({.workspace = with.platform.workspace(),
                        .accessibility = with.platform.accessibility(),
                        .pasteboard = with.platform.pasteboard(),
                        .primary = &with.platform.primarySelection(),
                        .keys = with.platform.keys(),
                        .events = with.platform.events(),
                        .settings = &with.defaults},
                       readingBudget_)
    , contextTracker_(with.platform.workspace(), with.platform.accessibility(), readingBudget_,
                      with.clock)
    , triggerManager_(with.platform.events())
    , coordinator_({.selectionReader = selectionReader_,
                    .contextTracker = contextTracker_,
                    .aiService = aiService,
                    .notesStore = notesStore,
                    .resultPanelController = resultPanel_,
                    .notesEntranceController = notesEntrance_,
                    .userPreferences = with.preferences,
                    .triggerManager = triggerManager_,
                    .workspace = with.platform.workspace(),
                    .accessibility = with.platform.accessibility(),
                    .clock = with.clock,
                    .screenLock = with.platform.screenLock()})
{
    QObject::connect(&resultPanel_, &ResultPanelController::closed, &unsavedNotes_,
                     &UnsavedNotes::panelClosed);
    QObject::connect(&unsavedNotes_, &UnsavedNotes::noticed, &coordinator_,
                     &VellumoCoordinator::showNotice);
}

} // namespace vellumo
