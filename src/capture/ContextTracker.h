// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "capture/BrowserContextResolver.h"
#include "capture/ContextTracking.h"
#include <QObject>
#include <QPointer>

namespace vellumo {

class Accessibility;
class Clock;
class ReadingBudget;
class Workspace;

/// Determines the place of reading: the page in a browser, else the window, else the application.
/// Text in our own windows belongs to the open note's place, else to vellumo.
class ContextTracker : public QObject, public ContextTracking {
    Q_OBJECT

public:
    /// All must outlive this object. The budget is shared with the selection reader.
    ContextTracker(Workspace &workspace, Accessibility &accessibility, const ReadingBudget &budget,
                   Clock &clock);

    /// Returns the place of the note that is open in our own window in front; absent without one.
    std::function<std::optional<ReadingContext>()> openNoteContext;

    [[nodiscard]] std::optional<ReadingContext> currentContext() override;
    void refine(QObject *receiver, Refined refined) override;

private:
    struct Place {
        RunningApplication application;
        std::optional<QString> title;
        std::optional<PageUrl> url;
    };

    [[nodiscard]] static ReadingContext contextOf(const Place &place);
    [[nodiscard]] ReadingContext ownContext() const;
    /// Returns the title of the focused window; absent without the user's trust.
    [[nodiscard]] std::optional<QString> focusedWindowTitle(qint64 processIdentifier);
    [[nodiscard]] Place placeIn(const RunningApplication &application, QDeadlineTimer deadline);
    void takeNewName();
    void lookAgain();
    void endSearch();
    void wakeBrowserInFront();

    Workspace &workspace_;
    Accessibility &accessibility_;
    const ReadingBudget &budget_;
    Clock &clock_;
    BrowserContextResolver browserContextResolver_;

    std::optional<Place> place_; ///< last result, unless it was one of our own windows
    int search_ = 0; ///< number of the search; timers of older ones do nothing
    QPointer<QObject> receiver_;
    Refined refined_; ///< empty while no search is running
};

} // namespace vellumo
