// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/OpenAIService.h"

#include "explain/ChatCompletion.h"
#include "platform/Clock.h"

#include <QPointer>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto timeout = 60s;
constexpr auto totalTimeout = 120s;
constexpr auto tokenTimeout = 5s;

/// The path below the base; absent when that is no URL.
std::optional<QUrl> joined(const QString &base, const QString &path)
{
    const QUrl url(base.endsWith(u'/') ? base + path : base + u'/' + path, QUrl::StrictMode);
    return url.isValid() ? std::optional(url) : std::nullopt;
}

QByteArray bearer(const QString &token)
{
    return "Bearer " + token.toUtf8();
}

/// A token with control characters would be a request that is not sent at all.
bool isSound(const QString &token)
{
    return std::ranges::none_of(token,
                                [](QChar c) { return c.category() == QChar::Other_Control; });
}

} // namespace

const QString OpenAIService::usualBase = u"https://api.openai.com/v1"_s;

OpenAIService::OpenAIService(Endpoint endpoint, QString model, HttpSession &session, Clock &clock)
    : endpoint_(std::move(endpoint))
    , model_(std::move(model))
    , session_(session)
    , clock_(clock)
{
}

Result<OpenAIService, MissingKeyError>
OpenAIService::make(const Lookup &lookup, const QString &model, HttpSession &session, Clock &clock)
{
    const auto found = endpoint(lookup);
    if (!found) {
        return MissingKeyError{};
    }
    return OpenAIService(*found, model, session, clock);
}

std::optional<OpenAIService::Endpoint> OpenAIService::endpoint(const Lookup &lookup)
{
    if (const auto proxy = lookup(u"VELLUMO_PROXY_URL"_s)) {
        if (const auto url = joined(*proxy, u"v1/chat"_s)) {
            return Endpoint{*url, bearer(lookup(u"VELLUMO_CLIENT_TOKEN"_s).value_or(QString()))};
        }
    }
    const auto key = lookup(u"OPENAI_API_KEY"_s);
    if (!key) {
        return std::nullopt;
    }
    const auto ownBase = lookup(u"OPENAI_BASE_URL"_s);
    const auto url = joined(ownBase.value_or(usualBase), u"chat/completions"_s);
    if (!url) {
        // Every question fails for its address; the key is shown to no other server than was meant.
        return Endpoint{{}, bearer({}), false};
    }
    return Endpoint{*url, bearer(*key), !ownBase};
}

void OpenAIService::explain(const ExplanationRequest &request, QObject *context,
                            ExplanationCompletion<ExplanationResult> completion)
{
    post(ChatCompletion::explanationBody(model_, request), context,
         [completion = std::move(completion)](const auto &answer) {
             completion(ChatCompletion::explanation(answer));
         });
}

void OpenAIService::followUp(const QList<ChatTurn> &transcript, const QString &language,
                             QObject *context, ExplanationCompletion<QString> completion)
{
    post(ChatCompletion::followUpBody(model_, transcript, language), context,
         [completion = std::move(completion)](const auto &answer) {
             completion(ChatCompletion::followUpAnswer(answer));
         });
}

void OpenAIService::post(const QByteArray &body, QObject *context, const HttpCompletion &completion)
{
    HttpRequest request;
    request.method = "POST";
    request.url = endpoint_.url;
    request.headers = {{"Content-Type", "application/json"},
                       {"Authorization", endpoint_.authorization}};
    request.body = body;
    request.timeout = timeout;
    request.totalTimeout = totalTimeout;
    if (!firebaseTokenProvider || !endpoint_.acceptsFirebaseToken) {
        session_.send(request, context, completion);
        return;
    }
    // Whichever comes first, the token or the end of its time, sends the request; it does not need
    // this object any more.
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
