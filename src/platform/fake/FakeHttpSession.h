// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/HttpSession.h"
#include <QPointer>

namespace vellumo {

/// Records requests, which the test answers.
class FakeHttpSession : public HttpSession {
public:
    bool isWarm = false;
    QList<HttpRequest> requests; ///< all requests, oldest first

    void send(const HttpRequest &request, QObject *context, HttpCompletion completion) override;
    void warmUp() override { isWarm = true; }

    /// Completes the oldest pending request. Returns false when there is none. A request whose
    /// context is destroyed counts as answered.
    bool answer(const Result<HttpResponse, HttpError> &result);

private:
    QList<std::pair<QPointer<QObject>, HttpCompletion>> waiting_;
};

} // namespace vellumo
