// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include "sync/DataConnectWire.h"
#include <QObject>
#include <functional>
#include <optional>

namespace vellumo {

class Authenticating;
class Clock;

/// Client of the backend that keeps a signed-in user's notes and profile, through four named
/// operations.
///
/// A failure completes its operation with an error and prints one diagnostic line. Nothing is
/// retried. Without a configured backend every operation fails at once and prints nothing.
/// Completions run exactly once, on the main thread and never before the call returns; when
/// `context` is destroyed first, they never run and what is left of the operation is not sent.
class DataConnectHistory {
public:
    /// Answers a configuration value, trimmed; absent when it is blank. Asked at every call.
    using Lookup = std::function<std::optional<QString>(const QString &key)>;
    /// Gets SyncError::Kind::None when the operation succeeded.
    using Done = std::function<void(SyncError::Kind error)>;
    using Listed = std::function<void(const Result<QList<ReadingNote>, SyncError::Kind> &)>;

    /// What is needed must outlive every operation.
    struct Collaborators {
        Authenticating &auth;
        HttpSession &session;
        Clock &clock;
        Lookup configuration; ///< reads VELLUMO_DATACONNECT_URL and FIREBASE_API_KEY
    };

    explicit DataConnectHistory(Collaborators collaborators);

    /// What the user said about themselves when they first ran the program; absent is not sent.
    void saveProfile(const std::optional<QString> &hearAbout, const std::optional<QString> &role,
                     const std::optional<QString> &industry, QObject *context,
                     const Done &completion) const;

    /// Done also when the backend has the note already. Follow-ups and the time are not sent.
    void createNote(const ReadingNote &note, QObject *context, const Done &completion) const;

    /// Adds the exchanges one after the other. After a failure the backend may have the first ones.
    void addFollowUps(const QUuid &noteId, const QList<FollowUpExchange> &exchanges,
                      QObject *context, const Done &completion) const;

    /// All notes of the user, in the backend's order.
    void list(QObject *context, const Listed &completion) const;

    /// The id in what the backend sends for one, with or without hyphens.
    [[nodiscard]] static std::optional<QUuid> uuid(const QString &from);

private:
    class FollowUpUpload;
    class ListReading;
    struct Operation;
    struct Failure {
        SyncError::Kind kind = SyncError::Kind::Unreadable;
        bool isDuplicate = false; ///< the backend has what was sent
        QString excerpt; ///< for a log
    };
    using Answer = DataConnectWire::Answer;
    using Verdict = std::function<void(const std::optional<DataConnectError> &)>;
    /// Decodes an operation's answer and reports its error, at once or later; never once the
    /// context is destroyed.
    using Reader = std::function<void(const Answer &, QObject *context, const Verdict &)>;
    [[nodiscard]] static Reader atOnce(std::optional<DataConnectError> (*read)(const Answer &));
    using Completion = std::function<void(const std::optional<Failure> &)>;

    [[nodiscard]] bool isConfigured() const;
    [[nodiscard]] QUrl url(const QString &kind) const;
    void execute(const Operation &operation, QObject *context, const Reader &read,
                 const Completion &completion) const;
    static void finish(const std::optional<DataConnectError> &error, const QStringList &sent,
                       const Completion &completion);
    void addFollowUp(const QUuid &noteId, const FollowUpExchange &exchange, QObject *context,
                     const Completion &completion) const;

    Collaborators with_;
};

} // namespace vellumo
