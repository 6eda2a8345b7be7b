// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/AIExplaining.h"
#include "explain/ServiceEndpoint.h"
#include <optional>

namespace vellumo {

class Clock;

/// Asks a chat-completions service, one request for each explanation and follow-up.
///
/// Failures are not retried. The timeout is 60 seconds of silence and 120 seconds in all.
class OpenAIService : public AIExplaining {
public:
    using TokenCompletion = std::function<void(const std::optional<QString> &)>;
    /// Completes with a Firebase ID token, absent when there is none, at any time but never after
    /// `context` is destroyed.
    using TokenProvider = std::function<void(QObject *context, TokenCompletion)>;

    /// Session and clock must outlive the service and its requests.
    OpenAIService(ServiceEndpoint endpoint, HttpSession &session, Clock &clock);

    /// If set, called before each request for a token to include, if the endpoint accepts one. A
    /// token that takes longer than five seconds is omitted.
    TokenProvider firebaseTokenProvider;

    void explain(const ExplanationRequest &request, QObject *context,
                 ExplanationCompletion<ExplanationResult> completion) override;
    void followUp(const QList<ChatTurn> &transcript, const QString &language, QObject *context,
                  ExplanationCompletion<QString> completion) override;

private:
    void post(const QByteArray &body, QObject *context, const HttpCompletion &completion);

    ServiceEndpoint endpoint_;
    HttpSession &session_;
    Clock &clock_;
};

} // namespace vellumo
