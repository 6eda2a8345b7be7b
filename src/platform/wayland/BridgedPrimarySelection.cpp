// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/BridgedPrimarySelection.h"

#include <utility>

namespace vellumo {

namespace {

/// More applications than run at once. Forgetting one only makes its copies less trusted.
constexpr qsizetype maxPublishers = 256;

/// Changes between windows that the source does not see are not reported, so that older text may be
/// of another one of them.
constexpr std::chrono::seconds maxUnseenAge{30};

/// Maximum delay between the publication in XWayland and its report to clipboard managers.
constexpr std::chrono::milliseconds maxBridgingTime{100};

} // namespace

BridgedPrimarySelection::BridgedPrimarySelection(PrimarySelection &x11, PrimarySelection *managed,
                                                 FrontWindows &native, Process compositor)
    : x11_(x11)
    , managed_(managed)
    , latest_(&x11)
    , native_(native)
    , compositor_(std::move(compositor))
{
}

std::optional<Publication> BridgedPrimarySelection::publication()
{
    const auto ofX11 = x11_.publication();
    const auto ofAll = managed_ != nullptr ? managed_->publication() : std::nullopt;
    const bool isOfX11Window = ofX11 && ofX11->processIdentifier != compositor_()
        && (!ofAll || ofX11->age <= ofAll->age + maxBridgingTime);
    latest_ = isOfX11Window || !ofAll ? &x11_ : managed_;
    if (isOfX11Window || (!ofX11 && !ofAll)) {
        return ofX11;
    }
    return attributed(ofAll ? *ofAll : *ofX11);
}

std::optional<Publication> BridgedPrimarySelection::attributed(Publication publication)
{
    const auto window = native_.frontWindow();
    if (!window) {
        return std::nullopt;
    }
    publication.processIdentifier = window->isActive ? window->processIdentifier : 0;
    publication.isOver = publication.age > std::chrono::steady_clock::now() - window->since
        || (!window->isActive && publication.age > maxUnseenAge);
    if (!publication.isOver) {
        if (publishers_.size() >= maxPublishers) {
            publishers_.clear();
        }
        publishers_.insert(publication.processIdentifier);
    }
    return publication;
}

bool BridgedPrimarySelection::publishes(qint64 processIdentifier)
{
    return publishers_.contains(processIdentifier) || x11_.publishes(processIdentifier);
}

std::optional<QString> BridgedPrimarySelection::string(QDeadlineTimer deadline)
{
    return latest_->string(deadline);
}

} // namespace vellumo
