// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "sync/DataConnectWire.h"

#include "notes/StrictUuid.h"
#include "sync/DataConnectAnswer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>
#include <QStringList>
#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo::DataConnectWire {

namespace {

DataConnectError undecodable()
{
    return {.description = u"the answer cannot be read"_s};
}

/// Whether the service says that it has the row already, and not that the row breaks another rule.
bool saysDuplicate(const QStringList &messages)
{
    constexpr std::array signs = {"duplicate"_L1, "already exists"_L1, "unique"_L1,
                                  "constraint"_L1};
    constexpr std::array otherRules = {"foreign key"_L1, "check"_L1, "not null"_L1, "not-null"_L1};
    const auto holds = [](const QString &message, const auto &words) {
        return std::any_of(words.begin(), words.end(), [&message](QLatin1StringView word) {
            return message.contains(word, Qt::CaseInsensitive);
        });
    };
    return std::any_of(messages.begin(), messages.end(),
                       [&](const QString &message) { return holds(message, signs); })
        && std::none_of(messages.begin(), messages.end(),
                        [&](const QString &message) { return holds(message, otherRules); });
}

/// What a body of an error says, if it is one of the forms that services give errors.
QStringList errorMessages(const QByteArray &body)
{
    const QJsonObject object = QJsonDocument::fromJson(body).object();
    QStringList found;
    const auto take = [&found](const QJsonValue &holder) {
        const QJsonValue message = holder.isObject() ? holder[u"message"] : holder;
        if (message.isString()) {
            found.append(message.toString());
        }
    };
    take(object);
    take(object.value(u"error"));
    const QJsonArray errors = object.value(u"errors").toArray();
    for (const QJsonValue error : errors) {
        take(error);
    }
    return found;
}

SyncError::Kind kindOfStatus(int status)
{
    switch (status) {
    case 401:
        return SyncError::Kind::SignedOut;
    case 413:
        return SyncError::Kind::NoteTooLarge;
    default:
        return SyncError::Kind::Refused;
    }
}

DataConnectError badStatus(const HttpResponse &response)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString body = decoder(response.body);
    return {kindOfStatus(response.status), response.status,
            // above, a gateway in front of the service may say anything
            response.status < 500 && saysDuplicate(errorMessages(response.body)),
            decoder.hasError() ? u"HTTP %1"_s.arg(response.status) : body};
}

/// What the service says, when that is neither an error nor nothing.
Result<DataConnectAnswer, DataConnectError> read(const Answer &answer, double now = 0)
{
    if (!answer.isOk()) {
        return DataConnectError{.kind = kindOf(answer.error().kind),
                                .description = describe(answer.error().kind)};
    }
    const HttpResponse &response = answer.value();
    if (response.status < 200 || response.status > 299) {
        return badStatus(response);
    }
    auto said = DataConnectAnswer::fromJson(response.body, now);
    if (!said || !said->areErrorsSound) {
        return undecodable();
    }
    if (!said->errors.isEmpty()) {
        return DataConnectError{.kind = SyncError::Kind::Refused,
                                .isDuplicate = saysDuplicate(said->errors),
                                .description = said->errors.join(u"; "_s)};
    }
    if (said->data == DataConnectAnswer::Data::Absent) {
        return DataConnectError{.description = u"empty response"_s};
    }
    if (said->data == DataConnectAnswer::Data::Other) {
        return undecodable();
    }
    return std::move(*said);
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

SyncError::Kind kindOf(HttpError::Kind kind)
{
    switch (kind) {
    case HttpError::Kind::Untrusted:
        return SyncError::Kind::Untrusted;
    case HttpError::Kind::TooLarge:
        return SyncError::Kind::NoteTooLarge;
    case HttpError::Kind::Insecure:
    case HttpError::Kind::NoAddress:
        return SyncError::Kind::AddressNotAllowed;
    default:
        return SyncError::Kind::Unreachable;
    }
}

std::optional<DataConnectError> done(const Answer &answer)
{
    const auto said = read(answer);
    return said.isOk() ? std::nullopt : std::optional(said.error());
}

std::optional<DataConnectError> noteInserted(const Answer &answer)
{
    const auto said = read(answer);
    if (!said.isOk()) {
        return said.error();
    }
    return said.value().hasInsertedId ? std::nullopt : std::optional(undecodable());
}

Result<QList<ReadingNote>, DataConnectError> listedNotes(const Answer &answer, double now)
{
    const auto said = read(answer, now);
    if (!said.isOk()) {
        DataConnectError error = said.error();
        if (error.kind == SyncError::Kind::NoteTooLarge) {
            error.kind = SyncError::Kind::ListTooLarge;
        }
        return error;
    }
    if (!said.value().notes) {
        return undecodable();
    }
    return *said.value().notes;
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
