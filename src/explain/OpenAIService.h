// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "explain/AIExplaining.h"
#include <QUrl>
#include <optional>

namespace vellumo {

class Clock;

/// There is no service to ask: neither a proxy nor a key.
struct MissingKeyError { };

/// Asks a chat-completions service, one request for each explanation and follow-up: a proxy of
/// vellumo's, a service with the user's own key, or a model server of the user's.
///
/// No retries: every failure ends the operation. Silence ends it after 60 seconds.
class OpenAIService : public AIExplaining {
public:
    /// Answers a configuration value, trimmed; absent when it is blank.
    using Lookup = std::function<std::optional<QString>(const QString &key)>;

    using TokenCompletion = std::function<void(const std::optional<QString> &)>;
    /// Answers a Firebase ID token, or nothing when there is none, at any time; not after
    /// `context` is gone.
    using TokenProvider = std::function<void(QObject *context, TokenCompletion)>;

    /// The base address without any other.
    static const QString usualBase;

    /// Reads VELLUMO_PROXY_URL and VELLUMO_CLIENT_TOKEN, else OPENAI_API_KEY and OPENAI_BASE_URL.
    /// With a base that is no address each question fails as HttpError::Kind::noAddress.
    /// Session and clock must outlive the service and its requests.
    [[nodiscard]] static Result<OpenAIService, MissingKeyError>
    make(const Lookup &lookup, const QString &model, HttpSession &session, Clock &clock);

    /// If set, asked before each request for a token to send along. A token that takes too long is
    /// not waited for. Never asked on the way to the server of OPENAI_BASE_URL.
    TokenProvider firebaseTokenProvider;

    void explain(const ExplanationRequest &request, QObject *context,
                 ExplanationCompletion<ExplanationResult> completion) override;
    void followUp(const QList<ChatTurn> &transcript, const QString &language, QObject *context,
                  ExplanationCompletion<QString> completion) override;

private:
    struct Endpoint {
        QUrl url;
        QByteArray authorization; ///< value of the header; "Bearer " when there is no token
        bool acceptsFirebaseToken = true;
    };

    OpenAIService(Endpoint endpoint, QString model, HttpSession &session, Clock &clock);

    [[nodiscard]] static std::optional<Endpoint> endpoint(const Lookup &lookup);
    void post(const QByteArray &body, QObject *context, const HttpCompletion &completion);

    Endpoint endpoint_;
    QString model_;
    HttpSession &session_;
    Clock &clock_;
};

} // namespace vellumo
