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

/// Names the place of reading: the page in a browser, else the window, else the application. What
/// is read in our own windows belongs to the note that is open there, else to vellumo.
class ContextTracker : public QObject, public ContextTracking {
    Q_OBJECT

public:
    /// All must outlive this object. The budget is the selection reader's.
    ContextTracker(Workspace &workspace, Accessibility &accessibility, const ReadingBudget &budget,
                   Clock &clock);

    /// Answers the place of the note that is open in our own window in front, if there is one.
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
    /// Absent without the user's trust.
    [[nodiscard]] std::optional<QString> focusedWindowTitle(qint64 processIdentifier);
    void lookAgain();
    void endSearch();
    void wakeBrowserInFront();

    Workspace &workspace_;
    Accessibility &accessibility_;
    const ReadingBudget &budget_;
    Clock &clock_;
    BrowserContextResolver browserContextResolver_;

    std::optional<Place> place_; ///< answered last, unless it was one of our own
    int search_ = 0; ///< counts the searches, so that timers of an older one do nothing
    QPointer<QObject> receiver_;
    Refined refined_; ///< empty while nothing is searched
};

} // namespace vellumo
