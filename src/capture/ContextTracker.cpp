// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/ContextTracker.h"

#include "capture/ReadingBudget.h"
#include "platform/Accessibility.h"
#include "platform/Clock.h"
#include "platform/Workspace.h"

#include <array>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

/// At the first query a browser needs some 100 ms for the address.
constexpr std::array lookAgainAfter{60ms, 200ms, 600ms, 1500ms};
/// Delay after the start, when other work is more urgent.
constexpr auto wakeAfter = 1500ms;
/// Applications have set their window titles by then.
constexpr auto maxSearchTime = 3s;
/// Maximum time that a repeated query blocks the main thread.
constexpr auto lookAgainTime = 100ms;

} // namespace

ContextTracker::ContextTracker(Workspace &workspace, Accessibility &accessibility,
                               const ReadingBudget &budget, Clock &clock)
    : workspace_(workspace)
    , accessibility_(accessibility)
    , budget_(budget)
    , clock_(clock)
    , browserContextResolver_(accessibility)
{
    connect(&workspace_, &Workspace::didRenameFrontmostApplication, this,
            &ContextTracker::takeNewName, Qt::QueuedConnection);
    connect(&accessibility_, &Accessibility::connectionChanged, this,
            [this] { clock_.after(wakeAfter, this, [this] { wakeBrowserInFront(); }); });
}

std::optional<ReadingContext> ContextTracker::currentContext()
{
    endSearch();
    place_.reset();
    if (workspace_.isOwnWindowActive()) {
        return ownContext();
    }
    const auto application = workspace_.frontmostApplication();
    if (!application) {
        return std::nullopt;
    }
    place_ = placeIn(*application, budget_.contextDeadline());
    return contextOf(*place_);
}

ContextTracker::Place ContextTracker::placeIn(const RunningApplication &application,
                                              QDeadlineTimer deadline)
{
    return {application, focusedWindowTitle(application.processIdentifier),
            browserContextResolver_.currentURL(application, deadline)};
}

ReadingContext ContextTracker::contextOf(const Place &place)
{
    const auto &[application, title, url] = place;
    const QString name =
        application.localizedName.value_or(application.bundleIdentifier.value_or(u"Unknown App"_s));
    const QString identifier = application.bundleIdentifier.value_or(name);
    if (url) {
        const QString displayName = url->host.isEmpty() ? title.value_or(name) : url->host;
        return {u"web-url:"_s + url->absoluteString, displayName, ReadingContextSource::webURL};
    }
    if (title && !title->isEmpty()) {
        return {u"app-window:"_s + identifier + u':' + *title, *title,
                ReadingContextSource::appWindow};
    }
    return {u"window-session:"_s + identifier, name, ReadingContextSource::windowSession};
}

ReadingContext ContextTracker::ownContext() const
{
    if (const auto open = openNoteContext ? openNoteContext() : std::nullopt) {
        return *open;
    }
    return contextOf({{0, u"vellumo"_s, u"app.vellumo.Vellumo"_s}, {}, {}});
}

std::optional<QString> ContextTracker::focusedWindowTitle(qint64 processIdentifier)
{
    return accessibility_.isProcessTrusted() ? accessibility_.focusedWindowTitle(processIdentifier)
                                             : std::nullopt;
}

void ContextTracker::refine(QObject *receiver, Refined refined)
{
    endSearch();
    if (!place_) {
        return;
    }
    receiver_ = receiver;
    refined_ = std::move(refined);
    const auto unlessOver = [this, search = search_](auto action) {
        return [this, search, action] {
            if (search == search_) {
                (this->*action)();
            }
        };
    };
    const bool lacksPage =
        !place_->url && BrowserContextResolver::isKnownBrowser(place_->application);
    if (lacksPage || place_->title.value_or(QString()).isEmpty()) {
        for (const auto delay : lookAgainAfter) {
            clock_.after(delay, this, unlessOver(&ContextTracker::lookAgain));
        }
    }
    clock_.after(maxSearchTime, this, unlessOver(&ContextTracker::endSearch));
}

void ContextTracker::endSearch()
{
    ++search_;
    refined_ = nullptr;
}

void ContextTracker::takeNewName()
{
    const auto application = workspace_.frontmostApplication();
    if (refined_ && receiver_ && application && place_->application == RunningApplication()) {
        place_ = placeIn(*application, QDeadlineTimer(lookAgainTime));
        const Refined refined = refined_; // the callback may start another search
        refined(contextOf(*place_));
    } else {
        lookAgain();
    }
}

void ContextTracker::lookAgain()
{
    const auto application = workspace_.frontmostApplication();
    if (refined_ && place_->application == RunningApplication()) {
        return; // until the application is known
    }
    if (!refined_ || !receiver_ || !application
        || application->processIdentifier != place_->application.processIdentifier) {
        endSearch();
        return;
    }
    // Absent while one of our own windows has the keyboard, when the window behind does not change.
    const auto title = focusedWindowTitle(application->processIdentifier);
    const bool hadTitle = !place_->title.value_or(QString()).isEmpty();
    if (hadTitle && title && *title != *place_->title) {
        endSearch(); // another document with another address
        return;
    }
    const ReadingContext before = contextOf(*place_);
    place_->application = *application;
    if (!hadTitle) {
        place_->title = title;
    }
    if (!place_->url) {
        place_->url =
            browserContextResolver_.currentURL(*application, QDeadlineTimer(lookAgainTime));
    }
    if (const ReadingContext now = contextOf(*place_); now != before) {
        const Refined refined = refined_; // the callback may start another search
        refined(now);
    }
}

/// Queries the address in advance, since some browsers build their accessibility tree only after
/// the first query.
void ContextTracker::wakeBrowserInFront()
{
    const auto application = workspace_.frontmostApplication();
    if (application && accessibility_.isConnected()) {
        static_cast<void>(
            browserContextResolver_.currentURL(*application, QDeadlineTimer(lookAgainTime)));
    }
}

} // namespace vellumo
