// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "backend/BackendTables.h"

#include "backend/IdToken.h"
#include <QDateTime>
#include <QSqlError>
#include <QTimeZone>
#include <QUuid>
#include <QVariant>

namespace vellumo::test {

using namespace Qt::StringLiterals;

namespace {

constexpr auto tables = {
    "CREATE TABLE IF NOT EXISTS accounts (uid TEXT PRIMARY KEY, email TEXT UNIQUE)",
    "CREATE TABLE IF NOT EXISTS refresh_tokens (token TEXT PRIMARY KEY, uid TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS id_tokens (token TEXT PRIMARY KEY, uid TEXT NOT NULL, "
    "expires_at INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS profiles (uid TEXT PRIMARY KEY, hearAbout TEXT, role TEXT, "
    "industry TEXT)",
    "CREATE TABLE IF NOT EXISTS notes (id TEXT PRIMARY KEY, uid TEXT NOT NULL, "
    "source_text TEXT NOT NULL, translation TEXT, explanation TEXT NOT NULL, "
    "created_at INTEGER NOT NULL)",
    "CREATE INDEX IF NOT EXISTS notes_of_user ON notes (uid, created_at)",
    "CREATE TABLE IF NOT EXISTS follow_ups (id TEXT PRIMARY KEY, "
    "note_id TEXT NOT NULL REFERENCES notes (id), question TEXT NOT NULL, answer TEXT NOT NULL, "
    "created_at INTEGER NOT NULL)",
    "CREATE INDEX IF NOT EXISTS follow_ups_of_note ON follow_ups (note_id, created_at)",
};

/// 32 hexadecimal digits, the real service's form of ids.
QString newId()
{
    return QUuid::createUuid().toString(QUuid::Id128);
}

QString withoutHyphens(const QString &id)
{
    return QString(id).remove(u'-');
}

void fail(const QSqlQuery &query)
{
    qFatal("%s: %s", qPrintable(query.lastQuery()), qPrintable(query.lastError().text()));
}

QString timestamp(qint64 microseconds)
{
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(microseconds / 1000, QTimeZone::utc());
    return time.toString(u"yyyy-MM-dd'T'HH:mm:ss.zzz"_s)
        + u"%1Z"_s.arg(microseconds % 1000, 3, 10, QChar(u'0'));
}

} // namespace

BackendTables::BackendTables(const QString &file)
    : database_(QSqlDatabase::addDatabase(u"QSQLITE"_s, newId()))
{
    database_.setDatabaseName(file);
    if (!database_.open())
        qFatal("cannot open %s: %s", qPrintable(file), qPrintable(database_.lastError().text()));
    // Survives a crash of the process, not of the machine.
    run(u"PRAGMA journal_mode = WAL"_s).finish(); // an unread row would hold a lock
    run(u"PRAGMA synchronous = OFF"_s);
    for (const char *table : tables)
        run(QString::fromLatin1(table));
    lastTime_ = value(u"SELECT max(created_at) FROM (SELECT created_at FROM notes "
                      "UNION ALL SELECT created_at FROM follow_ups)"_s,
                      {})
                    .value_or(QString())
                    .toLongLong();
}

BackendTables::~BackendTables()
{
    const QString connection = database_.connectionName();
    prepared_.clear();
    database_ = {};
    QSqlDatabase::removeDatabase(connection);
}

QSqlQuery &BackendTables::run(const QString &statement, const QVariantList &values)
{
    auto found = prepared_.find(statement);
    if (found == prepared_.end()) {
        found = prepared_.try_emplace(statement, database_).first;
        found->second.setForwardOnly(true);
        if (!found->second.prepare(statement))
            fail(found->second);
    }
    QSqlQuery &query = found->second;
    for (qsizetype i = 0; i < values.size(); ++i)
        query.bindValue(static_cast<int>(i), values.at(i));
    if (!query.exec())
        fail(query);
    return query;
}

std::optional<QString> BackendTables::value(const QString &statement, const QVariantList &values)
{
    QSqlQuery &query = run(statement, values);
    const auto found = query.next() ? std::optional(query.value(0).toString()) : std::nullopt;
    query.finish();
    return found;
}

qint64 BackendTables::now()
{
    lastTime_ = qMax(lastTime_ + 1, QDateTime::currentMSecsSinceEpoch() * 1000);
    return lastTime_;
}

QString BackendTables::uidOf(const QString &email)
{
    run(u"INSERT OR IGNORE INTO accounts VALUES (?, ?)"_s, {newId(), email});
    return value(u"SELECT uid FROM accounts WHERE email = ?"_s, {email}).value();
}

QString BackendTables::newRefreshToken(const QString &uid)
{
    const QString token = u"refresh-"_s + newId();
    run(u"INSERT INTO refresh_tokens VALUES (?, ?)"_s, {token, uid});
    return token;
}

QString BackendTables::newIdToken(const QString &uid, std::chrono::seconds lifetime)
{
    const QString email =
        value(u"SELECT email FROM accounts WHERE uid = ?"_s, {uid}).value_or(QString());
    const QString token = idToken(uid, email, newId());
    run(u"INSERT INTO id_tokens VALUES (?, ?, ?)"_s,
        {token, uid, static_cast<qint64>(QDateTime::currentSecsSinceEpoch() + lifetime.count())});
    return token;
}

std::optional<QString> BackendTables::uidOfRefreshToken(const QString &token)
{
    return value(u"SELECT uid FROM refresh_tokens WHERE token = ?"_s, {token});
}

std::optional<QString> BackendTables::uidOfIdToken(const QString &token)
{
    return value(u"SELECT uid FROM id_tokens WHERE token = ? AND expires_at > ?"_s,
                 {token, QDateTime::currentSecsSinceEpoch()});
}

void BackendTables::expireIdTokens()
{
    run(u"UPDATE id_tokens SET expires_at = 0"_s);
}

std::optional<QString> BackendTables::upsertProfile(const QString &uid,
                                                    const QJsonObject &variables)
{
    QVariantList values{uid};
    for (const auto &name : {"hearAbout"_L1, "role"_L1, "industry"_L1})
        values.append(variables.value(name).toVariant());
    run(u"INSERT INTO profiles VALUES (?, ?, ?, ?) ON CONFLICT (uid) DO UPDATE SET "
        "hearAbout = coalesce(excluded.hearAbout, hearAbout), "
        "role = coalesce(excluded.role, role), industry = coalesce(excluded.industry, industry)"_s,
        values);
    return std::nullopt;
}

std::optional<QString> BackendTables::createNote(const QString &uid, const QJsonObject &variables)
{
    const QString id = withoutHyphens(variables.value("id"_L1).toString());
    if (value(u"SELECT id FROM notes WHERE id = ?"_s, {id}))
        return u"SQL query error: pq: duplicate key value violates unique constraint "
               "\"note_pkey\""_s;
    run(u"INSERT INTO notes VALUES (?, ?, ?, ?, ?, ?)"_s,
        {id, uid, variables.value("sourceText"_L1).toString(),
         variables.value("translation"_L1).toVariant(),
         variables.value("explanation"_L1).toString(), now()});
    return std::nullopt;
}

std::optional<QString> BackendTables::addFollowUp(const QString &uid, const QJsonObject &variables)
{
    const QString noteId = withoutHyphens(variables.value("noteId"_L1).toString());
    if (!value(u"SELECT id FROM notes WHERE id = ? AND uid = ?"_s, {noteId, uid}))
        return u"no such note of this user"_s;
    run(u"INSERT INTO follow_ups VALUES (?, ?, ?, ?, ?)"_s,
        {newId(), noteId, variables.value("question"_L1).toString(),
         variables.value("answer"_L1).toString(), now()});
    return std::nullopt;
}

int BackendTables::noteCount(const QString &uid)
{
    return value(u"SELECT count(*) FROM notes WHERE uid = ?"_s, {uid}).value_or(QString()).toInt();
}

QJsonArray BackendTables::notes(const QString &uid)
{
    QHash<QString, QJsonArray> followUps;
    QSqlQuery &ofNotes = run(u"SELECT note_id, follow_ups.id, question, answer FROM follow_ups "
                             "JOIN notes ON notes.id = note_id WHERE uid = ? "
                             "ORDER BY follow_ups.created_at"_s,
                             {uid});
    while (ofNotes.next())
        followUps[ofNotes.value(0).toString()].append(
            QJsonObject{{u"id"_s, ofNotes.value(1).toString()},
                        {u"question"_s, ofNotes.value(2).toString()},
                        {u"answer"_s, ofNotes.value(3).toString()}});
    QJsonArray notes;
    QSqlQuery &query =
        run(u"SELECT id, source_text, translation, explanation, created_at FROM notes "
            "WHERE uid = ? ORDER BY created_at"_s,
            {uid});
    while (query.next()) {
        const QString id = query.value(0).toString();
        notes.append(QJsonObject{{u"id"_s, id},
                                 {u"sourceText"_s, query.value(1).toString()},
                                 {u"translation"_s, QJsonValue::fromVariant(query.value(2))},
                                 {u"explanation"_s, query.value(3).toString()},
                                 {u"createdAt"_s, timestamp(query.value(4).toLongLong())},
                                 {u"followUps_on_note"_s, followUps.value(id)}});
    }
    query.finish();
    return notes;
}

QJsonObject BackendTables::profile(const QString &uid)
{
    QSqlQuery &query =
        run(u"SELECT hearAbout, role, industry FROM profiles WHERE uid = ?"_s, {uid});
    if (!query.next())
        return {};
    const QJsonObject profile{{u"hearAbout"_s, QJsonValue::fromVariant(query.value(0))},
                              {u"role"_s, QJsonValue::fromVariant(query.value(1))},
                              {u"industry"_s, QJsonValue::fromVariant(query.value(2))}};
    query.finish();
    return profile;
}

} // namespace vellumo::test
