// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/StoreFile.h"

#include "notes/ExactJson.h"
#include "notes/StrictUuid.h"

#include <QSet>

namespace vellumo {

namespace {

using Value = rapidjson::Value;

const Value *member(const Value &object, const char *name)
{
    const auto found = object.FindMember(name);
    return found == object.MemberEnd() ? nullptr : &found->value;
}

// All readers below return whether the value has the right form.

bool read(const Value *value, QString &text)
{
    if (value == nullptr || !value->IsString()) {
        return false;
    }
    text = QString::fromUtf8(value->GetString(), static_cast<qsizetype>(value->GetStringLength()));
    return true;
}

bool read(const Value *value, double &number)
{
    if (value == nullptr || !value->IsNumber()) {
        return false;
    }
    number = value->GetDouble();
    return true;
}

bool read(const Value *value, QUuid &id)
{
    if (value == nullptr || !value->IsString()) {
        return false;
    }
    const auto parsed = strictUuid({value->GetString(), value->GetStringLength()});
    id = parsed.value_or(QUuid());
    return parsed.has_value();
}

bool read(const Value *value, ReadingContextSource &source)
{
    QString text;
    if (!read(value, text)) {
        return false;
    }
    const auto parsed = readingContextSource(text);
    source = parsed.value_or(source);
    return parsed.has_value();
}

bool read(const Value *value, FollowUpExchange &exchange)
{
    return value != nullptr && value->IsObject() && read(member(*value, "id"), exchange.id)
        && read(member(*value, "question"), exchange.question)
        && read(member(*value, "answer"), exchange.answer);
}

bool read(const Value *value, ReadingContext &context)
{
    return value != nullptr && value->IsObject() && read(member(*value, "key"), context.key)
        && read(member(*value, "displayName"), context.displayName)
        && read(member(*value, "source"), context.source);
}

bool read(const Value *value, NoteSyncState &state)
{
    if (value == nullptr || !value->IsObject()) {
        return false;
    }
    const Value *created = member(*value, "created");
    const Value *count = member(*value, "syncedFollowUpCount");
    if (created == nullptr || !created->IsBool() || count == nullptr || !count->IsInt64()) {
        return false;
    }
    state = {created->GetBool(), count->GetInt64()};
    return true;
}

template <typename Element> bool read(const Value *value, QList<Element> &list);

bool read(const Value *value, ReadingNote &note)
{
    return value != nullptr && value->IsObject() && read(member(*value, "id"), note.id)
        && read(member(*value, "sourceText"), note.sourceText)
        && read(member(*value, "translation"), note.translation)
        && read(member(*value, "explanation"), note.explanation)
        && read(member(*value, "createdAt"), note.createdAt)
        && read(member(*value, "followUps"), note.followUps);
}

bool read(const Value *value, StoredNotesBucket &bucket)
{
    return value != nullptr && value->IsObject() && read(member(*value, "context"), bucket.context)
        && read(member(*value, "notes"), bucket.notes);
}

template <typename Element> bool read(const Value *value, QList<Element> &list)
{
    if (value == nullptr || !value->IsArray()) {
        return false;
    }
    list.reserve(static_cast<qsizetype>(value->Size()));
    for (const Value &element : value->GetArray()) {
        if (!read(&element, list.emplaceBack())) {
            return false;
        }
    }
    return true;
}

bool read(const Value *value, NoteSyncStates &states)
{
    if (value == nullptr || !value->IsObject()) {
        return false;
    }
    for (const auto &[name, state] : value->GetObject()) {
        QString id;
        if (!read(&name, id) || !read(&state, states[id])) {
            return false;
        }
    }
    return true;
}

} // namespace

std::optional<StoreFile> StoreFile::fromJson(const QByteArray &json)
{
    rapidjson::Document document;
    StoreFile file;
    if (!parseExactly(json, document) || !document.IsObject()
        || !read(member(document, "buckets"), file.buckets)) {
        return std::nullopt;
    }
    if (const Value *states = member(document, "syncStates");
        states != nullptr && !states->IsNull()) {
        if (!read(states, file.syncStates.emplace())) {
            return std::nullopt;
        }
    }
    return file;
}

std::optional<StoreFile> StoreFile::decode(const QByteArray &json)
{
    if (auto current = fromJson(json)) {
        return current;
    }
    auto buckets = bucketsFromOlderLayout(json);
    if (!buckets) {
        return std::nullopt;
    }
    NoteSyncStates states;
    for (const StoredNotesBucket &bucket : std::as_const(*buckets)) {
        for (const ReadingNote &note : bucket.notes) {
            states[noteIdText(note.id)] = {true, note.followUps.size()};
        }
    }
    return StoreFile{*std::move(buckets), std::move(states)};
}

bool StoreFile::hasTwinBuckets() const
{
    QSet<QString> keys;
    for (const StoredNotesBucket &bucket : buckets) {
        keys.insert(bucket.context.key);
    }
    return keys.size() < buckets.size();
}

std::optional<QList<StoredNotesBucket>> StoreFile::bucketsFromOlderLayout(const QByteArray &json)
{
    rapidjson::Document document;
    QList<StoredNotesBucket> buckets;
    if (!parseExactly(json, document) || !read(&document, buckets)) {
        return std::nullopt;
    }
    return buckets;
}

} // namespace vellumo
