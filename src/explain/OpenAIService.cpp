// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/OpenAIService.h"

#include "explain/ChatCompletion.h"
#include "platform/Clock.h"

#include <QPointer>
#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto timeout = 60s;
constexpr auto totalTimeout = 120s;
constexpr auto tokenTimeout = 5s;

/// Returns whether the token has no control characters, with which the request would not be sent.
bool isSound(const QString &token)
{
    return std::ranges::none_of(token,
                                [](QChar c) { return c.category() == QChar::Other_Control; });
}

} // namespace

OpenAIService::OpenAIService(ServiceEndpoint endpoint, HttpSession &session, Clock &clock)
    : endpoint_(std::move(endpoint))
    , session_(session)
    , clock_(clock)
{
}

void OpenAIService::explain(const ExplanationRequest &request, QObject *context,
                            ExplanationCompletion<ExplanationResult> completion)
{
    post(ChatCompletion::explanationBody(endpoint_.model(), request), context,
         [completion = std::move(completion)](const auto &answer) {
             completion(ChatCompletion::explanation(answer));
         });
}

void OpenAIService::followUp(const QList<ChatTurn> &transcript, const QString &language,
                             QObject *context, ExplanationCompletion<QString> completion)
{
    post(ChatCompletion::followUpBody(endpoint_.model(), transcript, language), context,
         [completion = std::move(completion)](const auto &answer) {
             completion(ChatCompletion::followUpAnswer(answer));
         });
}

void OpenAIService::post(const QByteArray &body, QObject *context, const HttpCompletion &completion)
{
    HttpRequest request;
    request.method = "POST";
    request.url = endpoint_.url();
    request.headers = {{"Content-Type", "application/json"},
                       {"Authorization", endpoint_.authorization()}};
    request.body = body;
    request.timeout = timeout;
    request.totalTimeout = totalTimeout;
    if (!firebaseTokenProvider || !endpoint_.acceptsFirebaseToken()) {
        session_.send(request, context, completion);
        return;
    }
    // The token or its timeout sends the request, whichever is first. Neither uses this object,
    // which may be destroyed by then.
    const auto isWaiting = std::make_shared<bool>(true);
    const auto send = [isWaiting, request, context = QPointer<QObject>(context), completion,
                       &session = session_](const std::optional<QString> &token) {
        if (!std::exchange(*isWaiting, false) || !context) {
            return;
        }
        HttpRequest complete = request;
        if (token && isSound(*token)) {
            complete.headers.append({"X-Firebase-Token", token->toUtf8()});
        }
        session.send(complete, context, completion);
    };
    clock_.after(tokenTimeout, context, [send] { send(std::nullopt); });
    firebaseTokenProvider(context, send);
}

} // namespace vellumo
