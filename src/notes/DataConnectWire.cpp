// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/DataConnectWire.h"

#include "notes/InternetDateTime.h"
#include "notes/StrictUuid.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>
#include <QStringList>
#include <array>
#include <rapidjson/document.h>

using namespace Qt::StringLiterals;

namespace vellumo::DataConnectWire {

namespace {

// Iterative: hostile nesting must not exhaust the stack.
constexpr unsigned parseFlags =
    rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;

using Value = rapidjson::Value;

const Value *member(const Value &object, const char *name)
{
    const auto found = object.FindMember(name);
    return found == object.MemberEnd() ? nullptr : &found->value;
}

bool isAbsent(const Value *value)
{
    return value == nullptr || value->IsNull();
}

std::optional<QString> text(const Value *value)
{
    if (value == nullptr || !value->IsString()) {
        return std::nullopt;
    }
    return QString::fromUtf8(value->GetString(), static_cast<qsizetype>(value->GetStringLength()));
}

DataConnectError undecodable()
{
    return {.description = u"the answer cannot be read"_s};
}

DataConnectError badStatus(const HttpResponse &response)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString body = decoder(response.body);
    return {DataConnectError::Kind::refused, response.status,
            decoder.hasError() ? u"HTTP %1"_s.arg(response.status) : body};
}

/// The messages of an answer's errors; absent when they do not have the form of errors.
std::optional<QStringList> messages(const Value *errors)
{
    QStringList found;
    if (isAbsent(errors)) {
        return found;
    }
    if (!errors->IsArray()) {
        return std::nullopt;
    }
    for (const Value &error : errors->GetArray()) {
        const auto message = error.IsObject() ? text(member(error, "message")) : std::nullopt;
        if (!message) {
            return std::nullopt;
        }
        found.append(*message);
    }
    return found;
}

/// An answer that has been parsed, with the result in it or the error in its place.
struct Parsed {
    explicit Parsed(const Answer &answer) { error = read(answer); }

    rapidjson::Document document;
    const Value *data = nullptr; ///< an object, if there is no error
    std::optional<DataConnectError> error;

private:
    std::optional<DataConnectError> read(const Answer &answer)
    {
        if (!answer.isOk()) {
            return DataConnectError{.kind = DataConnectError::Kind::unreachable,
                                    .description = describe(answer.error().kind)};
        }
        const HttpResponse &response = answer.value();
        if (response.status < 200 || response.status > 299) {
            return badStatus(response);
        }
        document.Parse<parseFlags>(response.body.constData(),
                                   static_cast<size_t>(response.body.size()));
        if (document.HasParseError() || !document.IsObject()) {
            return undecodable();
        }
        const auto errors = messages(member(document, "errors"));
        if (!errors) {
            return undecodable();
        }
        if (!errors->isEmpty()) {
            return DataConnectError{.kind = DataConnectError::Kind::refused,
                                    .description = errors->join(u"; "_s)};
        }
        const Value *found = member(document, "data");
        if (isAbsent(found)) {
            return DataConnectError{.description = u"empty response"_s};
        }
        if (!found->IsObject()) {
            return undecodable();
        }
        data = found;
        return std::nullopt;
    }
};

bool read(const Value &value, FollowUpExchange &exchange)
{
    if (!value.IsObject()) {
        return false;
    }
    const auto question = text(member(value, "question"));
    const auto answer = text(member(value, "answer"));
    if (!text(member(value, "id")) || !question || !answer) {
        return false;
    }
    exchange = {QUuid::createUuid(), *question, *answer};
    return true;
}

bool read(const Value &value, double now, ReadingNote &note)
{
    if (!value.IsObject()) {
        return false;
    }
    const auto id = text(member(value, "id"));
    const auto sourceText = text(member(value, "sourceText"));
    const Value *translation = member(value, "translation");
    const auto explanation = text(member(value, "explanation"));
    const auto createdAt = text(member(value, "createdAt"));
    const Value *followUps = member(value, "followUps_on_note");
    if (!id || !sourceText || !explanation || !createdAt || followUps == nullptr
        || !followUps->IsArray() || (!isAbsent(translation) && !translation->IsString())) {
        return false;
    }
    const auto known = uuid(*id);
    note.id = known ? *known : QUuid::createUuid();
    note.sourceText = *sourceText;
    note.translation = text(translation).value_or(QString());
    note.explanation = *explanation;
    note.createdAt = internetDateTime(*createdAt).value_or(now);
    for (const Value &followUp : followUps->GetArray()) {
        if (!read(followUp, note.followUps.emplaceBack())) {
            return false;
        }
    }
    return true;
}

} // namespace

QByteArray requestBody(const QString &operationName, const DataConnectVariables &variables)
{
    QJsonObject sent;
    for (const auto &[name, value] : variables) {
        if (value) {
            // Half a surrogate pair, from a selection cut in two, would make the body no UTF-8.
            sent.insert(name, value->isValidUtf16() ? *value : QString::fromUtf8(value->toUtf8()));
        }
    }
    return QJsonDocument(QJsonObject{{u"operationName"_s, operationName}, {u"variables"_s, sent}})
        .toJson(QJsonDocument::Compact);
}

std::optional<DataConnectError> done(const Answer &answer)
{
    return Parsed(answer).error;
}

std::optional<DataConnectError> noteInserted(const Answer &answer)
{
    const Parsed parsed(answer);
    if (parsed.error) {
        return parsed.error;
    }
    const Value *inserted = member(*parsed.data, "note_insert");
    const bool hasId =
        inserted != nullptr && inserted->IsObject() && text(member(*inserted, "id")).has_value();
    return hasId ? std::nullopt : std::optional(undecodable());
}

Result<QList<ReadingNote>, DataConnectError> listedNotes(const Answer &answer, double now)
{
    const Parsed parsed(answer);
    if (parsed.error) {
        return *parsed.error;
    }
    const Value *listed = member(*parsed.data, "notes");
    if (listed == nullptr || !listed->IsArray()) {
        return undecodable();
    }
    QList<ReadingNote> notes;
    notes.reserve(static_cast<qsizetype>(listed->Size()));
    for (const Value &value : listed->GetArray()) {
        if (!read(value, now, notes.emplaceBack())) {
            return undecodable();
        }
    }
    return notes;
}

std::optional<QUuid> uuid(const QString &text)
{
    const auto parsed = [](const QString &canonical) {
        const QByteArray bytes = canonical.toUtf8();
        return strictUuid({bytes.constData(), static_cast<size_t>(bytes.size())});
    };
    if (const auto id = parsed(text)) {
        return id;
    }
    QString digits = text;
    digits.remove(u'-');
    if (digits.size() != 32) {
        return std::nullopt;
    }
    for (const qsizetype position : std::array<qsizetype, 4>{20, 16, 12, 8}) {
        digits.insert(position, u'-');
    }
    return parsed(digits);
}

} // namespace vellumo::DataConnectWire
