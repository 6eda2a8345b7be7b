// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Answers of a chat-completions service.

#include "Fuzzing.h"
#include "explain/ChatCompletion.h"
#include "explain/ExplanationPrompt.h"

using namespace vellumo;
using namespace vellumo::fuzzing;

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0) {
        return 0;
    }
    const int status = (data[0] & 7) == 7 ? 503 : 200;
    const QByteArray body = bytes(data + 1, size - 1);
    const HttpResponse answer{.status = status, .body = body};
    static_cast<void>(ChatCompletion::explanation(answer));
    const auto followUp = ChatCompletion::followUpAnswer(answer);
    require(!followUp.isOk() || (status == 200 && !followUp.value().trimmed().isEmpty()),
            "an answer has words");
    static_cast<void>(ExplanationPrompt::Payload::fromJson(body));
    return 0;
}
