// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <chrono>
#include <map>
#include <optional>

namespace vellumo::test {

/// The data of the stand-in backend: accounts, tokens, profiles, notes and follow-ups, in an SQLite
/// file that survives a crash of the process. A file that cannot be used ends the process.
class BackendTables {
public:
    explicit BackendTables(const QString &file);
    ~BackendTables();
    BackendTables(const BackendTables &) = delete;
    BackendTables &operator=(const BackendTables &) = delete;
    BackendTables(BackendTables &&) = delete;
    BackendTables &operator=(BackendTables &&) = delete;

    /// Returns the account's id, creating the account if it is new.
    QString uidOf(const QString &email);
    QString newRefreshToken(const QString &uid);
    QString newIdToken(const QString &uid, std::chrono::seconds lifetime);
    [[nodiscard]] std::optional<QString> uidOfRefreshToken(const QString &token);
    /// Absent also when the token has expired.
    [[nodiscard]] std::optional<QString> uidOfIdToken(const QString &token);
    void expireIdTokens();

    // Each returns the error message of the real service's database, or nothing.
    std::optional<QString> upsertProfile(const QString &uid, const QJsonObject &variables);
    std::optional<QString> createNote(const QString &uid, const QJsonObject &variables);
    std::optional<QString> addFollowUp(const QString &uid, const QJsonObject &variables);

    [[nodiscard]] int noteCount(const QString &uid);
    /// Returns the user's notes in the form of the ListNotes operation, oldest first.
    [[nodiscard]] QJsonArray notes(const QString &uid);
    [[nodiscard]] QJsonObject profile(const QString &uid);

private:
    QSqlQuery &run(const QString &statement, const QVariantList &values = {});
    [[nodiscard]] std::optional<QString> value(const QString &statement,
                                               const QVariantList &values);
    [[nodiscard]] qint64 now();

    QSqlDatabase database_;
    std::map<QString, QSqlQuery> prepared_; ///< by statement
    qint64 lastTime_ = 0; ///< microseconds since 1970; unique for each row
};

} // namespace vellumo::test
