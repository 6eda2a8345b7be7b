// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/ExplanationError.h"
#include "explain/ExplanationTypes.h"
#include "platform/Result.h"
#include <QByteArray>
#include <QList>

/// Request bodies and answers of the chat-completions interface.
namespace vellumo::ChatCompletion {

/// Returns a request for an explanation in the form of one JSON object.
[[nodiscard]] QByteArray explanationBody(const QString &model, const ExplanationRequest &request);

/// Returns a request for a plain-text answer to the transcript's last question.
[[nodiscard]] QByteArray followUpBody(const QString &model, const QList<ChatTurn> &transcript,
                                      const QString &language);

[[nodiscard]] Result<ExplanationResult, ExplanationError>
explanation(const Result<HttpResponse, HttpError> &answer);

[[nodiscard]] Result<QString, ExplanationError>
followUpAnswer(const Result<HttpResponse, HttpError> &answer);

} // namespace vellumo::ChatCompletion
