// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/DataControlPrimary.h"

#include "platform/wayland/client/DataControlDevice.h"
#include "platform/wayland/client/OfferReader.h"
#include "platform/wayland/client/WaylandClientModule.h"
#include "platform/wayland/client/WaylandConnection.h"

namespace vellumo {

void DataControlPrimary::noteChange()
{
    publishedAt_ = std::chrono::steady_clock::now();
    readAt_.reset();
    if (!device_.isStarted()) {
        readAt_ = publishedAt_; // the time before is unknown
    }
}

std::optional<Publication> DataControlPrimary::publication()
{
    connection_.readEvents();
    if (device_.primary() == nullptr) {
        return std::nullopt;
    }
    const auto since = [](Time time) {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now() - time);
    };
    Publication publication;
    publication.processIdentifier = waylandClientModule::unknownProcess;
    publication.age = since(publishedAt_);
    if (readAt_) {
        publication.sinceRead = since(*readAt_);
    }
    return publication;
}

bool DataControlPrimary::publishes(qint64 /*processIdentifier*/)
{
    return false;
}

std::optional<QString> DataControlPrimary::string(QDeadlineTimer deadline)
{
    connection_.readEvents();
    const DataOffer *offer = device_.primary();
    if (offer == nullptr) {
        return std::nullopt;
    }
    readAt_ = std::chrono::steady_clock::now();
    return readText(connection_, *offer, deadline);
}

} // namespace vellumo
