// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/DataConnectWire.h"

#include "notes/DataConnectAnswer.h"
#include "notes/StrictUuid.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo::DataConnectWire {

namespace {

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

/// What the service says, when that is neither an error nor nothing.
Result<DataConnectAnswer, DataConnectError> read(const Answer &answer, double now = 0)
{
    if (!answer.isOk()) {
        return DataConnectError{.kind = DataConnectError::Kind::unreachable,
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
        return DataConnectError{.kind = DataConnectError::Kind::refused,
                                .description = said->errors.join(u"; "_s)};
    }
    if (said->data == DataConnectAnswer::Data::absent) {
        return DataConnectError{.description = u"empty response"_s};
    }
    if (said->data == DataConnectAnswer::Data::other) {
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
        return said.error();
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
