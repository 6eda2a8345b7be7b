// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include "platform/HttpSession.h"
#include "sync/SyncError.h"
#include <QByteArray>
#include <optional>
#include <utility>

namespace vellumo {

/// Why an operation has no result.
struct DataConnectError {
    SyncError::Kind kind = SyncError::Kind::Unreadable;
    int code = -1; ///< the status, if it was one that says no
    bool isDuplicate = false; ///< the service refuses what it already has
    QString description = {}; ///< whole; a server's may repeat what was sent: not for a log
};

/// An operation's variables; absent ones are not sent.
using DataConnectVariables = QList<std::pair<QString, std::optional<QString>>>;

/// Encodes requests to the notes service and decodes its answers. Independent of the connection.
namespace DataConnectWire {

[[nodiscard]] QByteArray requestBody(const QString &operationName,
                                     const DataConnectVariables &variables);

using Answer = Result<HttpResponse, HttpError>;

/// What it means for an operation that no complete answer came.
[[nodiscard]] SyncError::Kind kindOf(HttpError::Kind kind);

/// The error of an operation without a result; nothing when it is done.
[[nodiscard]] std::optional<DataConnectError> done(const Answer &answer);

/// The error of a note's creation; nothing when the service answers with the note's id.
[[nodiscard]] std::optional<DataConnectError> noteInserted(const Answer &answer);

/// The user's notes in the service's order. Ids that are none become fresh ones, as those of
/// follow-ups always do; a time that is none becomes `now`. Takes a while for a long list. Any
/// thread.
[[nodiscard]] Result<QList<ReadingNote>, DataConnectError> listedNotes(const Answer &answer,
                                                                       double now);

/// An id in canonical form, or in 32 digits with hyphens anywhere or nowhere.
[[nodiscard]] std::optional<QUuid> uuid(const QString &text);

} // namespace DataConnectWire

} // namespace vellumo
