// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/CaptureWiring.h"

#include "app/Foundation.h"
#include "computer/FailureText.h"
#include "notes/NotesStoring.h"

namespace vellumo {

CaptureWiring::CaptureWiring(Foundation &with, AIExplaining &aiService, NotesStoring &notesStore,
                             const QString &notesFolder)
    : resultPanel_(with.windows, with.screens, with.platform.events(), with.texts)
    , unsavedNotes_({.store = notesStore, .panel = resultPanel_, .texts = with.texts}, notesFolder)
    , openNote_(notesFolder)
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
    QObject::connect(&coordinator_, &VellumoCoordinator::noteOpened, &coordinator_,
                     [this](const NoteWithContext &note) { openNote_.keep(note); });
    QObject::connect(&coordinator_, &VellumoCoordinator::noteClosed, &coordinator_,
                     [this, &notesStore](const QUuid &id) {
                         if (!notesStore.saveFailure()) {
                             openNote_.drop(id);
                         }
                     });
    resultPanel_.describeFailure = [&texts = with.texts](const ExplanationFailure &failure) {
        return failureText(failure, texts);
    };
    QObject::connect(&resultPanel_, &ResultPanelController::copyRequested, &coordinator_,
                     [&pasteboard = with.platform.pasteboard()](const QString &text) {
                         pasteboard.write(plainText(text));
                     });
    triggerManager_.onOptionHeld = [this] { resultPanel_.focusPanel(); };
    resultPanel_.canHoldOption = [this] { return triggerManager_.knowsHolding(); };
    openNote_.recover(notesStore);
}

} // namespace vellumo
