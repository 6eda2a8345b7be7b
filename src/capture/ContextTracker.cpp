// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/ContextTracker.h"

#include "capture/ReadingBudget.h"
#include "platform/Accessibility.h"
#include "platform/Workspace.h"

using namespace Qt::StringLiterals;

namespace vellumo {

ContextTracker::ContextTracker(Workspace &workspace, Accessibility &accessibility,
                               const ReadingBudget &budget)
    : workspace_(workspace)
    , accessibility_(accessibility)
    , budget_(budget)
    , browserContextResolver_(accessibility)
{
}

std::optional<ReadingContext> ContextTracker::currentContext()
{
    const auto application = workspace_.frontmostApplication();
    if (!application) {
        return std::nullopt;
    }
    const QString name = application->localizedName.value_or(
        application->bundleIdentifier.value_or(u"Unknown App"_s));
    const QString identifier = application->bundleIdentifier.value_or(name);
    const auto title = focusedWindowTitle(application->processIdentifier);
    const auto url = browserContextResolver_.currentURL(*application, budget_.contextDeadline());
    if (url) {
        const QString displayName = url->host.isEmpty() ? title.value_or(name) : url->host;
        return ReadingContext{u"web-url:"_s + url->absoluteString, displayName,
                              ReadingContextSource::webURL};
    }
    if (title && !title->isEmpty()) {
        return ReadingContext{u"app-window:"_s + identifier + u':' + *title, *title,
                              ReadingContextSource::appWindow};
    }
    return ReadingContext{u"window-session:"_s + identifier, name,
                          ReadingContextSource::windowSession};
}

std::optional<QString> ContextTracker::focusedWindowTitle(qint64 processIdentifier)
{
    return accessibility_.isProcessTrusted() ? accessibility_.focusedWindowTitle(processIdentifier)
                                             : std::nullopt;
}

} // namespace vellumo
