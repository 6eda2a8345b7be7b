// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/StoreFile.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

namespace vellumo {

namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void writeString(Writer &writer, const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    writer.String(utf8.constData(), static_cast<rapidjson::SizeType>(utf8.size()));
}

// Writes the shortest text that parses as the same number; whole seconds without a fraction.
void writeNumber(Writer &writer, double number)
{
    std::array<char, 32> text{};
    const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), number);
    Q_ASSERT(error == std::errc());
    writer.RawValue(text.data(), static_cast<size_t>(end - text.data()), rapidjson::kNumberType);
}

void write(Writer &writer, const FollowUpExchange &exchange)
{
    writer.StartObject();
    writer.Key("answer");
    writeString(writer, exchange.answer);
    writer.Key("id");
    writeString(writer, noteIdText(exchange.id));
    writer.Key("question");
    writeString(writer, exchange.question);
    writer.EndObject();
}

void write(Writer &writer, const ReadingNote &note)
{
    writer.StartObject();
    writer.Key("createdAt");
    writeNumber(writer, note.createdAt);
    writer.Key("explanation");
    writeString(writer, note.explanation);
    writer.Key("followUps");
    writer.StartArray();
    for (const FollowUpExchange &exchange : note.followUps) {
        write(writer, exchange);
    }
    writer.EndArray();
    writer.Key("id");
    writeString(writer, noteIdText(note.id));
    writer.Key("sourceText");
    writeString(writer, note.sourceText);
    writer.Key("translation");
    writeString(writer, note.translation);
    writer.EndObject();
}

void write(Writer &writer, const StoredNotesBucket &bucket)
{
    writer.StartObject();
    writer.Key("context");
    writer.StartObject();
    writer.Key("displayName");
    writeString(writer, bucket.context.displayName);
    writer.Key("key");
    writeString(writer, bucket.context.key);
    writer.Key("source");
    writeString(writer, stringValue(bucket.context.source));
    writer.EndObject();
    writer.Key("notes");
    writer.StartArray();
    for (const ReadingNote &note : bucket.notes) {
        write(writer, note);
    }
    writer.EndArray();
    writer.EndObject();
}

} // namespace

QString noteIdText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

namespace {

// Canonical ids need no escaping, which saves time with 100,000 of them.
bool isCanonicalId(const QString &key)
{
    return key.size() == 36 && std::all_of(key.begin(), key.end(), [](QChar character) {
               return (character >= u'0' && character <= u'9')
                   || (character >= u'A' && character <= u'F') || character == u'-';
           });
}

QByteArray encodedKey(const QString &key)
{
    if (isCanonicalId(key)) {
        return '"' + key.toLatin1() + '"';
    }
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writeString(writer, key);
    return {buffer.GetString(), static_cast<qsizetype>(buffer.GetSize())};
}

QByteArray encodedStates(const NoteSyncStates &states)
{
    constexpr qsizetype typicalSize = 112;
    QByteArray text;
    text.reserve(states.size() * typicalSize);
    text.append('{');
    const char *separator = "\n    ";
    for (auto state = states.begin(); state != states.end(); ++state) {
        text.append(separator).append(encodedKey(state.key()));
        text.append(": {\n      \"created\": ").append(state->created ? "true" : "false");
        text.append(",\n      \"syncedFollowUpCount\": ");
        text.append(QByteArray::number(state->syncedFollowUpCount)).append("\n    }");
        separator = ",\n    ";
    }
    return text.append(states.isEmpty() ? "}" : "\n  }");
}

} // namespace

QByteArray encodedBucket(const StoredNotesBucket &bucket)
{
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.SetIndent(' ', 2);
    // Written inside the file's frame to get its indentation, then cut out.
    writer.StartObject();
    writer.Key("buckets");
    writer.StartArray();
    const size_t frame = buffer.GetSize() + sizeof("\n    ") - 1;
    write(writer, bucket);
    return {buffer.GetString() + frame, static_cast<qsizetype>(buffer.GetSize() - frame)};
}

QList<QByteArray> encodedStoreFile(const QList<QByteArray> &encodedBuckets,
                                   const NoteSyncStates &states)
{
    static const QByteArray first("{\n  \"buckets\": [\n    ");
    static const QByteArray between(",\n    ");
    QList<QByteArray> pieces;
    pieces.reserve((2 * encodedBuckets.size()) + 2);
    for (const QByteArray &bucket : encodedBuckets) {
        pieces.append(pieces.isEmpty() ? first : between);
        pieces.append(bucket);
    }
    pieces.append(encodedBuckets.isEmpty() ? "{\n  \"buckets\": [],\n  \"syncStates\": "
                                           : "\n  ],\n  \"syncStates\": ");
    pieces.append(encodedStates(states));
    pieces.append("\n}");
    return pieces;
}

QByteArray StoreFile::toJson() const
{
    QList<QByteArray> encodedBuckets;
    encodedBuckets.reserve(buckets.size());
    for (const StoredNotesBucket &bucket : buckets) {
        encodedBuckets.append(encodedBucket(bucket));
    }
    return encodedStoreFile(encodedBuckets, syncStates.value_or(NoteSyncStates())).join();
}

} // namespace vellumo
