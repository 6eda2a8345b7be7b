// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/MockAIService.h"

#include "explain/ExplanationPrompt.h"
#include "platform/Clock.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

constexpr auto explanationDelay = 700ms;
constexpr auto followUpDelay = 500ms;

// Sample replies in the form of the model's.
constexpr char wordReply[] = R"json({
  "intent": "word_meaning",
  "translation": "中间件",
  "explanation": "来自 middle(中间)+ ware(软件),指夹在两端之间的一层。"
})json";
constexpr char sentenceReply[] = R"json({
  "intent": "sentence_meaning",
  "translation": "在中间件里修复鉴权问题。",
  "explanation": "auth 是 authentication 的常见缩写,指身份验证。"
})json";
constexpr char paragraphReply[] = R"json({
  "intent": "paragraph_gist",
  "translation": "这段在讲如何在中间件层处理请求。",
  "explanation": "middleware 一词最早来自上世纪 80 年代的企业系统架构。"
})json";

QByteArray sampleReply(SelectedTextKind kind)
{
    switch (kind) {
    case SelectedTextKind::word:
        return wordReply;
    case SelectedTextKind::sentence:
        return sentenceReply;
    case SelectedTextKind::paragraph:
        return paragraphReply;
    }
    Q_UNREACHABLE();
}

} // namespace

MockAIService::MockAIService(Clock &clock, SampleAnswers reason)
    : clock_(clock)
    , reason_(reason) { }

void MockAIService::explain(const ExplanationRequest &request, QObject *context,
                            ExplanationCompletion<ExplanationResult> completion)
{
    clock_.after(explanationDelay, context, [request, completion = std::move(completion)] {
        // Unused, but sample mode runs the same prompt code as a real request.
        [[maybe_unused]] const QString system = ExplanationPrompt::system(request);
        [[maybe_unused]] const QString user = ExplanationPrompt::user(request);

        const QByteArray reply = sampleReply(request.kind());
        const auto payload = ExplanationPrompt::Payload::fromJson(reply);
        if (!payload) {
            completion(undecodable());
            return;
        }
        completion(ExplanationResult{payload->translation, payload->explanation});
    });
}

void MockAIService::followUp(const QList<ChatTurn> &transcript, const QString &language,
                             QObject *context, ExplanationCompletion<QString> completion)
{
    Q_UNUSED(language)
    const auto lastQuestion =
        std::find_if(transcript.crbegin(), transcript.crend(),
                     [](const ChatTurn &turn) { return turn.role == ChatTurn::Role::user; });
    const QString question = lastQuestion != transcript.crend() ? lastQuestion->text : QString();
    clock_.after(followUpDelay, context, [question, completion = std::move(completion)] {
        completion(
            QString(u"（示例回答）关于「"_s + question + u"」,这里会给出简短的追问解答。"_s));
    });
}

} // namespace vellumo
