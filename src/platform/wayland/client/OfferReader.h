// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/wayland/client/WaylandClientModule.h"
#include <QByteArray>
#include <QDeadlineTimer>
#include <QString>
#include <optional>

namespace vellumo {

class WaylandConnection;
struct DataOffer;

/// What is read of an offer.
struct OfferLimits {
    qsizetype maxBytes;
    QDeadlineTimer deadline;
};

/// Requests one type of an offer and returns what the owner writes until it closes the pipe, or up
/// to the limit. Absent when the owner does not finish in time. An owner that exits while it writes
/// seems to have finished.
[[nodiscard]] std::optional<QByteArray> readOffer(WaylandConnection &connection,
                                                  const DataOffer &offer, const QByteArray &type,
                                                  const OfferLimits &limits);

/// Requests the offer's plain text without waiting for it. Absent without such a type.
[[nodiscard]] std::optional<waylandClientModule::RequestedText>
requestText(WaylandConnection &connection, const DataOffer &offer);

/// Returns the offer's plain text; absent without such a type, when it could not be read, and when
/// a password manager marks it as secret.
[[nodiscard]] std::optional<QString> readText(WaylandConnection &connection, const DataOffer &offer,
                                              QDeadlineTimer deadline);

} // namespace vellumo
