// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/BridgedPrimarySelection.h"

#include <utility>

namespace vellumo {

namespace {

/// More applications than run at once. Forgetting one only makes its copies less trusted.
constexpr qsizetype maxPublishers = 256;

} // namespace

BridgedPrimarySelection::BridgedPrimarySelection(PrimarySelection &x11, FrontWindows &native,
                                                 Process compositor)
    : x11_(x11)
    , native_(native)
    , compositor_(std::move(compositor))
{
}

std::optional<Publication> BridgedPrimarySelection::publication()
{
    auto publication = x11_.publication();
    if (!publication || publication->processIdentifier != compositor_()) {
        return publication;
    }
    const auto window = native_.frontWindow();
    if (!window) {
        return std::nullopt;
    }
    publication->processIdentifier = window->isActive ? window->processIdentifier : 0;
    publication->isOver = publication->age > std::chrono::steady_clock::now() - window->since;
    if (!publication->isOver) {
        if (publishers_.size() >= maxPublishers) {
            publishers_.clear();
        }
        publishers_.insert(publication->processIdentifier);
    }
    return publication;
}

bool BridgedPrimarySelection::publishes(qint64 processIdentifier)
{
    return publishers_.contains(processIdentifier) || x11_.publishes(processIdentifier);
}

std::optional<QString> BridgedPrimarySelection::string(QDeadlineTimer deadline)
{
    return x11_.string(deadline);
}

} // namespace vellumo
