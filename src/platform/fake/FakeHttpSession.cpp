// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/fake/FakeHttpSession.h"

#include <utility>

namespace vellumo {

void FakeHttpSession::send(const HttpRequest &request, QObject *context, HttpCompletion completion)
{
    requests.append(request);
    waiting_.append({context, std::move(completion)});
}

bool FakeHttpSession::answer(const Result<HttpResponse, HttpError> &result)
{
    if (waiting_.isEmpty()) {
        return false;
    }
    const auto [context, completion] = waiting_.takeFirst();
    if (context) {
        completion(result);
    }
    return true;
}

} // namespace vellumo
