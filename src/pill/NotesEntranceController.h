// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "pill/NotesEntranceControlling.h"
#include "pill/NotesPillModel.h"
#include "pill/PillContainerView.h"
#include "platform/DismissalMonitors.h"
#include "platform/FloatingWindows.h"
#include "platform/Screens.h"
#include <QObject>
#include <memory>
#include <vector>

namespace vellumo {

class BilingualText;
class Clock;
class DefaultsStore;

/// The pill that floats above other windows and expands into the list of notes. Its panel is
/// created when first shown, and kept. Where the user has turned the pill off, the panel is shown
/// only while its list is open. Never takes the keyboard. Main thread only.
class NotesEntranceController final : public QObject, public NotesEntranceControlling {
    Q_OBJECT

public:
    /// All must outlive the controller.
    struct Collaborators {
        FloatingWindows &windows;
        const Screens &screens;
        EventMonitoring &monitors;
        DefaultsStore &defaults;
        Clock &clock;
        BilingualText &texts;
    };

    explicit NotesEntranceController(const Collaborators &collaborators, QObject *parent = nullptr);
    ~NotesEntranceController() override;

    void show(int count, std::function<void()> onOpen) override;
    void setHighlighted(bool highlighted) override;
    void showNotesList(const QList<ReadingNote> &notes,
                       std::function<void(const ReadingNote &)> onSelectNote) override;
    void collapse() override;
    void playOnboardingDemo(const ReadingNote &sampleNote,
                            std::function<void()> completion) override;
    void endOnboardingDemo() override;

    /// Expands the pill into the list of the model's notes.
    void expand();
    /// Expands the pill into its menu.
    void openMenu();

    /// Returns whether the pill or its list is on screen.
    [[nodiscard]] bool isShown() const { return panel_ && panel_->isVisible(); }

    [[nodiscard]] const NotesPillModel &model() const { return *model_; }

Q_SIGNALS:
    /// Emitted when the pill was painted for the first time.
    void appeared();
    /// Emitted when the user asks for the main window, after the list was folded.
    void windowRequested();
    /// The same, to end the program.
    void quitRequested();

private:
    void expandInto(NotesPillModel::Face face, const Rect &frame);
    void ensurePanel();
    [[nodiscard]] bool isPillWanted() const;
    void showOrHidePill();
    [[nodiscard]] Point restoredPillOrigin() const;
    void savePillOrigin();
    void adaptToScreens();
    void selectNote(const ReadingNote &note);

    void collapseIfPointerIsOutside();
    void fold(const Rect &pill);
    void finishCollapse();

    void installCursorWatcher();
    void synchronizeCursor();
    void setHandCursor(bool isHand);

    void sendFinger();
    void openDemoList(const ReadingNote &sampleNote);
    void finishDemo();

    Collaborators with_;
    std::unique_ptr<NotesPillModel> model_; ///< declared before the panel, which uses it
    std::unique_ptr<PillContainerView> container_;
    std::unique_ptr<FloatingPanel> panel_; ///< null until first shown
    std::function<void()> onOpen_;
    std::function<void(const ReadingNote &)> onSelectNote_;
    DismissalMonitors collapseMonitors_; ///< while the list is open
    std::vector<std::unique_ptr<EventMonitorHandle>> cursorMonitors_;
    bool cursorIsHand_ = false;
    std::unique_ptr<FloatingPanel> fingerPanel_; ///< null except during the demonstration
    bool demoRunning_ = false;
    /// Null when no demonstration is running; timers stop with it.
    std::unique_ptr<QObject> demoScript_;
    std::function<void()> demoCompletion_;
    Rect folded_; ///< position of the pill before the list opened
};

} // namespace vellumo
