// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/StoreFile.h"

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

// The shortest text that reads back as the same number; whole seconds carry no fraction.
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

void write(Writer &writer, const NoteSyncState &state)
{
    writer.StartObject();
    writer.Key("created");
    writer.Bool(state.created);
    writer.Key("syncedFollowUpCount");
    writer.Int64(state.syncedFollowUpCount);
    writer.EndObject();
}

} // namespace

QString noteIdText(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

namespace {

// A fragment is written inside a frame like that of the file, which gives it its indentation, and
// then cut out.
template <typename Fragment>
QByteArray fragment(const char *key, bool inArray, const Fragment &writeFragment)
{
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.SetIndent(' ', 2);
    writer.StartObject();
    writer.Key(key);
    if (inArray) {
        writer.StartArray();
    }
    // Before its first character the writer puts a line break with blanks, or a colon with one.
    const size_t frame = buffer.GetSize() + (inArray ? sizeof("\n    ") : sizeof(": ")) - 1;
    writeFragment(writer);
    return {buffer.GetString() + frame, static_cast<qsizetype>(buffer.GetSize() - frame)};
}

} // namespace

QByteArray encodedBucket(const StoredNotesBucket &bucket)
{
    return fragment("buckets", true, [&bucket](Writer &writer) { write(writer, bucket); });
}

QByteArray encodedStoreFile(const QList<QByteArray> &encodedBuckets, const NoteSyncStates &states)
{
    const QByteArray encodedStates = fragment("syncStates", false, [&states](Writer &writer) {
        writer.StartObject();
        for (auto state = states.begin(); state != states.end(); ++state) {
            const QByteArray id = state.key().toUtf8();
            writer.Key(id.constData(), static_cast<rapidjson::SizeType>(id.size()));
            write(writer, state.value());
        }
        writer.EndObject();
    });

    qsizetype size = encodedStates.size() + 64;
    for (const QByteArray &bucket : encodedBuckets) {
        size += bucket.size() + 8;
    }
    QByteArray file;
    file.reserve(size);
    file.append("{\n  \"buckets\": [");
    const char *separator = "\n    ";
    for (const QByteArray &bucket : encodedBuckets) {
        file.append(separator).append(bucket);
        separator = ",\n    ";
    }
    file.append(encodedBuckets.isEmpty() ? "],\n" : "\n  ],\n");
    file.append("  \"syncStates\": ").append(encodedStates).append("\n}");
    return file;
}

QByteArray StoreFile::toJson() const
{
    QList<QByteArray> encodedBuckets;
    encodedBuckets.reserve(buckets.size());
    for (const StoredNotesBucket &bucket : buckets) {
        encodedBuckets.append(encodedBucket(bucket));
    }
    return encodedStoreFile(encodedBuckets, syncStates.value_or(NoteSyncStates()));
}

} // namespace vellumo
