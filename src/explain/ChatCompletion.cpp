// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/ChatCompletion.h"

#include "explain/ExplanationPrompt.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringDecoder>

using namespace Qt::StringLiterals;

namespace vellumo::ChatCompletion {

namespace {

using Content = Result<QString, ExplanationError>;

QJsonObject message(const QString &role, const QString &content)
{
    // many servers reject JSON with half a surrogate pair, as after a truncation
    const QString sound = content.isValidUtf16() ? content : QString::fromUtf8(content.toUtf8());
    return {{u"role"_s, role}, {u"content"_s, sound}};
}

QByteArray toJson(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QString textOf(const QByteArray &body)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(body);
    return decoder.hasError() ? u"<no body>"_s : text;
}

/// Returns the contents of all choices; absent unless each is a string.
std::optional<QStringList> contentsOfChoices(const QByteArray &body)
{
    const QJsonValue choices = QJsonDocument::fromJson(body).object().value("choices"_L1);
    if (!choices.isArray()) {
        return std::nullopt;
    }
    QStringList contents;
    for (const QJsonValue choice : choices.toArray()) {
        const QJsonValue content = choice["message"_L1]["content"_L1];
        if (!content.isString()) {
            return std::nullopt;
        }
        contents.append(content.toString());
    }
    return contents;
}

/// Returns the first choice's content unchanged; never blank.
Content firstContent(const Result<HttpResponse, HttpError> &answer)
{
    if (!answer.isOk()) {
        return ExplanationError(answer.error());
    }
    const HttpResponse &response = answer.value();
    if (response.status < 200 || response.status > 299) {
        return ExplanationError(
            ServiceError{ServiceError::Kind::badStatus, response.status, textOf(response.body)});
    }
    const auto contents = contentsOfChoices(response.body);
    if (!contents) {
        return undecodable();
    }
    if (contents->isEmpty() || contents->constFirst().trimmed().isEmpty()) {
        return ExplanationError(ServiceError{ServiceError::Kind::emptyResponse});
    }
    return contents->constFirst();
}

} // namespace

QByteArray explanationBody(const QString &model, const ExplanationRequest &request)
{
    const QJsonArray messages{message(u"system"_s, ExplanationPrompt::system(request)),
                              message(u"user"_s, ExplanationPrompt::user(request))};
    return toJson({{u"model"_s, model},
                   {u"messages"_s, messages},
                   {u"response_format"_s, QJsonObject{{u"type"_s, u"json_object"_s}}}});
}

QByteArray followUpBody(const QString &model, const QList<ChatTurn> &transcript,
                        const QString &language)
{
    QJsonArray messages{message(u"system"_s, ExplanationPrompt::followUpSystem(language))};
    for (const ChatTurn &turn : transcript) {
        const bool isUser = turn.role == ChatTurn::Role::user;
        messages.append(message(isUser ? u"user"_s : u"assistant"_s, turn.text));
    }
    return toJson({{u"model"_s, model}, {u"messages"_s, messages}});
}

Result<ExplanationResult, ExplanationError>
explanation(const Result<HttpResponse, HttpError> &answer)
{
    const Content content = firstContent(answer);
    if (!content.isOk()) {
        return content.error();
    }
    // The object must not be surrounded by a code fence or other text.
    const auto payload = ExplanationPrompt::Payload::fromJson(content.value().trimmed().toUtf8());
    if (!payload) {
        return ExplanationError(
            ServiceError{ServiceError::Kind::malformedPayload, 0, content.value()});
    }
    return ExplanationResult{payload->translation, payload->explanation};
}

Result<QString, ExplanationError> followUpAnswer(const Result<HttpResponse, HttpError> &answer)
{
    const Content content = firstContent(answer);
    return content.isOk() ? Content(content.value().trimmed()) : content;
}

} // namespace vellumo::ChatCompletion
