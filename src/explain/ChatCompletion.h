// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationError.h"
#include "explain/ExplanationTypes.h"
#include "platform/Result.h"
#include <QByteArray>
#include <QList>

/// The bodies of the chat-completions interface: what is sent and how the answer is read.
namespace vellumo::ChatCompletion {

/// Asks for an explanation, which is to come as one JSON object.
[[nodiscard]] QByteArray explanationBody(const QString &model, const ExplanationRequest &request);

/// Asks for the answer to the transcript's last question, as plain text.
[[nodiscard]] QByteArray followUpBody(const QString &model, const QList<ChatTurn> &transcript,
                                      const QString &language);

[[nodiscard]] Result<ExplanationResult, ExplanationError>
explanation(const Result<HttpResponse, HttpError> &answer);

[[nodiscard]] Result<QString, ExplanationError>
followUpAnswer(const Result<HttpResponse, HttpError> &answer);

} // namespace vellumo::ChatCompletion
